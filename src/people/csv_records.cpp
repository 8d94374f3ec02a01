#include "people/csv_records.h"

#include <utility>

namespace {

bool is_blank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

bool is_line_end(QChar c)
{
    return c == QLatin1Char('\n') || c == QLatin1Char('\r');
}

constexpr QChar quote = QLatin1Char('"');
constexpr QChar comma = QLatin1Char(',');

}  // namespace

CsvReader::CsvReader(QString text) : text_(std::move(text)) {}

bool CsvReader::at_line_end() const
{
    return pos_ >= text_.size() || is_line_end(text_[pos_]);
}

void CsvReader::skip_line_end()
{
    if (pos_ >= text_.size())
        return;
    if (text_[pos_] == QLatin1Char('\r') && pos_ + 1 < text_.size() && text_[pos_ + 1] == QLatin1Char('\n'))
        ++pos_;
    ++pos_;
    ++line_;
}

void CsvReader::skip_blanks()
{
    while (pos_ < text_.size() && is_blank(text_[pos_]))
        ++pos_;
}

void CsvReader::skip_blank_lines()
{
    for (;;) {
        const qsizetype start = pos_;
        skip_blanks();
        if (pos_ < text_.size() && is_line_end(text_[pos_])) {
            skip_line_end();
            continue;
        }
        if (pos_ < text_.size())
            pos_ = start;  // the line holds something: its blanks belong to its first field
        return;
    }
}

bool CsvReader::next(CsvRecord& record)
{
    skip_blank_lines();
    if (pos_ >= text_.size())
        return false;
    record = CsvRecord{};
    record.line = line_;
    for (;;) {
        QString field;
        if (!read_field(field)) {
            record.fields << field;
            record.complete = false;
            return true;
        }
        record.fields << field;
        if (pos_ < text_.size() && text_[pos_] == comma) {
            ++pos_;
            continue;
        }
        skip_line_end();
        return true;
    }
}

bool CsvReader::read_field(QString& field)
{
    skip_blanks();
    if (pos_ < text_.size() && text_[pos_] == quote) {
        ++pos_;
        for (;;) {
            if (pos_ >= text_.size())
                return false;
            const QChar c = text_[pos_];
            if (c == quote) {
                if (pos_ + 1 < text_.size() && text_[pos_ + 1] == quote) {
                    field += quote;
                    pos_ += 2;
                    continue;
                }
                ++pos_;
                break;
            }
            if (is_line_end(c)) {
                // A line end inside the quotes belongs to the field, as "\n".
                skip_line_end();
                field += QLatin1Char('\n');
                continue;
            }
            field += c;
            ++pos_;
        }
    }
    // An unquoted field, or what follows a closing quote, runs to the comma
    // or the line end; its trailing blanks are dropped.
    const qsizetype start = pos_;
    while (!at_line_end() && text_[pos_] != comma)
        ++pos_;
    QString rest = text_.mid(start, pos_ - start);
    qsizetype end = rest.size();
    while (end > 0 && is_blank(rest[end - 1]))
        --end;
    rest.truncate(end);
    field += rest;
    return true;
}
