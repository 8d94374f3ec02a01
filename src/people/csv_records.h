#pragma once
// Comma-separated records as spreadsheets and other programs write them, read
// from text already decoded (see shell/text_decoding.h).
//
// A record is one line. A field may stand in double quotes, and then holds
// commas, line ends and quotes written twice ("" for one). Blanks before and
// after a field that isn't quoted are dropped, and so are blanks around the
// quotes of one that is; a quote inside a field that doesn't start with one
// is an ordinary character, and text after a field's closing quote is kept
// with it. Lines end in "\n", "\r\n" or "\r"; the last line may have no end.
// Blank lines are passed over.

#include <QString>
#include <QStringList>

struct CsvRecord {
    QStringList fields;
    int line = 0;          // the line on which the record starts, from 1
    bool complete = true;  // false: a quoted field was still open at the end of the text
};

class CsvReader {
public:
    explicit CsvReader(QString text);

    // The next record; false when there are no more.
    bool next(CsvRecord& record);

private:
    // Reads one field from the current position; false when the text ended
    // inside its quotes.
    bool read_field(QString& field);
    bool at_line_end() const;
    // Passes over one line end, counting it.
    void skip_line_end();
    void skip_blanks();
    void skip_blank_lines();

    QString text_;
    qsizetype pos_ = 0;
    int line_ = 1;
};
