#pragma once
// Where a report of the Reports screen can go besides the screen and the
// printer: the file kinds with their output type and extension, the file
// name proposed for one, and the words for a printer's paper.

#include <QString>
#include <QVector>

struct OutputKind {
    QString text;       // as the list shows it
    int type = 0;       // GCR_Output_Type
    QString extension;  // without the point
};

// "WORD Format" (1, doc) to "Rich Text Format" (6, rtf), as the list offers them.
const QVector<OutputKind>& output_kinds();

// The extension of an output type; 7 gives "htm", which the list doesn't
// offer; an unknown type gives "".
QString extension_of(int type);

// The output folder ($GD), the report file's name and the extension:
// "/school/out/Invoices.csv".
QString proposed_output_file(const QString& report_file, const QString& extension);

// A printer's paper and orientation in words: "A4 - Portrait", "DL Envelope -
// Landscape"; any other paper or orientation is "Unknown".
QString printer_paper_words(int paper_size, int orientation);
