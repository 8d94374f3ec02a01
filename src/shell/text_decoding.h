#pragma once
// Text files that schools write by hand (script files, import files) come
// from Linux and from Windows machines alike. UTF-8 is read as UTF-8; a file
// that is not valid UTF-8 is taken to be in the Windows-1252 code page, the
// one Windows' editors save in by default in western Europe, rather than
// having its accented letters turned into replacement characters.

#include <QByteArray>
#include <QString>

enum class TextEncoding { Utf8, Windows1252 };

struct DecodedText {
    QString text;
    TextEncoding encoding = TextEncoding::Utf8;
};

// Decodes a whole file's bytes. A UTF-8 byte-order mark is dropped.
DecodedText decode_text_bytes(const QByteArray& bytes);

// Windows-1252 alone: every byte gives one character (the five bytes the code
// page leaves unassigned give the C1 control of the same number).
QString from_windows_1252(const QByteArray& bytes);
