#include "reports/report_list.h"

#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/vb_values.h"
#include "shell/error_log.h"
#include "shell/file_checks.h"
#include "shell/settings.h"
#include "shell/text_decoding.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <functional>

namespace {

const QString tag = QStringLiteral("freports");
constexpr int field_count = 16;
// The error of a line with too few or too many fields: reading past its end.
constexpr int input_past_end = 62;

bool is_blank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

// The fields of a line as a sequential-file read takes them: a field in
// double quotes runs to the next quote (there is no escape for one) and
// whatever stands between that quote and the comma is passed over; any other
// field runs to the comma, without its surrounding blanks.
QStringList record_fields(const QString& line)
{
    QStringList fields;
    qsizetype pos = 0;
    const qsizetype end = line.size();
    for (;;) {
        while (pos < end && is_blank(line[pos]))
            ++pos;
        QString field;
        if (pos < end && line[pos] == QLatin1Char('"')) {
            const qsizetype close = line.indexOf(QLatin1Char('"'), pos + 1);
            field = line.mid(pos + 1, (close < 0 ? end : close) - pos - 1);
            pos = close < 0 ? end : close + 1;
            while (pos < end && line[pos] != QLatin1Char(','))
                ++pos;
        } else {
            qsizetype comma = line.indexOf(QLatin1Char(','), pos);
            if (comma < 0)
                comma = end;
            field = line.mid(pos, comma - pos).trimmed();
            pos = comma;
        }
        fields << field;
        if (pos >= end)
            return fields;
        ++pos;  // past the comma
    }
}

// A number field: blank reads as 0, as a sequential read gives it.
template <typename Number, typename Convert>
bool number_field(const QString& text, Number& value, Convert convert)
{
    if (text.trimmed().isEmpty()) {
        value = 0;
        return true;
    }
    return convert(QVariant(text), value);
}

bool read_lines(const QString& path, QStringList& lines)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QString text = decode_text_bytes(file.readAll()).text;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    lines = text.split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.back().isEmpty())
        lines.removeLast();  // the end of the last line
    return true;
}

void report_failure(const QString& message, const QString& routine)
{
    Report_Error(report::Detected, message, engine::mb::Information, tag, routine);
}

// The first entry with this id; null when there is none.
ReportEntry* entry_with_id(ReportsList& list, qint16 id)
{
    for (ReportEntry& entry : list)
        if (entry.report_id == id)
            return &entry;
    return nullptr;
}

void replace_if_given(QString& field, const QString& given)
{
    if (!given.isEmpty())
        field = given;
}

void replace_if_given(quint8& field, quint8 given)
{
    if (given != 0)
        field = given;
}

// "=": the fields the line gives replace the entry's; blank ones keep it.
void change_entry(ReportEntry& entry, const ReportEntry& line)
{
    replace_if_given(entry.report_file, line.report_file);
    replace_if_given(entry.report_name, line.report_name);
    replace_if_given(entry.group_selection, line.group_selection);
    replace_if_given(entry.record_selection, line.record_selection);
    for (int kind = 0; kind < Param_Count; ++kind)
        replace_if_given(entry.params[kind], line.params[kind]);
    replace_if_given(entry.notices, line.notices);
    replace_if_given(entry.formula_name, line.formula_name);
    replace_if_given(entry.formula_value, line.formula_value);
    replace_if_given(entry.pre_script, line.pre_script);
}

// Applies one personalised line; false for a line type that means nothing.
bool apply_personal_line(ReportsList& list, const ReportEntry& line)
{
    const QString type = line.line_type.trimmed();
    if (type == QLatin1String("'"))
        return true;
    if (type == QLatin1String("+") || type == QLatin1String("*")) {
        list.append(line);
        return true;
    }
    if (type == QLatin1String("-")) {
        if (ReportEntry* entry = entry_with_id(list, line.report_id)) {
            entry->report_file.clear();
            entry->report_name.clear();
            entry->line_type = QStringLiteral("'");
        }
        return true;
    }
    if (type == QLatin1String("=")) {
        if (ReportEntry* entry = entry_with_id(list, line.report_id))
            change_entry(*entry, line);
        return true;
    }
    if (type == QLatin1String("!")) {
        // The name field of a swap line holds the new file.
        for (ReportEntry& entry : list)
            if (entry.report_file == line.report_file)
                entry.report_file = line.report_name;
        return true;
    }
    return false;
}

}  // namespace

ReportsList new_reports_list()
{
    ReportEntry choose;
    choose.report_id = 1;
    choose.report_name = QStringLiteral("Choose myself");
    choose.notices = 1;
    return {choose};
}

bool Read_Report_Line(const QString& line, ReportEntry& entry)
{
    const QStringList fields = record_fields(line);
    if (fields.size() != field_count) {
        engine::Err().Raise(input_past_end, QStringLiteral("Input past end of file"));
        return false;
    }
    ReportEntry read;
    read.line_type = fields[0];
    if (!number_field(fields[1], read.report_id, [](const QVariant& v, qint16& n) { return vb::CInt(v, n); }))
        return false;
    read.report_file = fields[2];
    read.report_name = fields[3];
    read.group_selection = fields[4];
    read.record_selection = fields[5];
    for (int kind = 0; kind < Param_Count; ++kind)
        if (!number_field(fields[6 + kind], read.params[kind], [](const QVariant& v, quint8& n) { return vb::CByte(v, n); }))
            return false;
    if (!number_field(fields[12], read.notices, [](const QVariant& v, quint8& n) { return vb::CByte(v, n); }))
        return false;
    read.formula_name = fields[13];
    read.formula_value = fields[14];
    read.pre_script = fields[15];
    entry = read;
    return true;
}

QString standard_list_path()
{
    return build_path(Settings().report_format_dir, QStringLiteral("zrepfmt.lst"));
}

QString personal_list_path()
{
    return Settings().report_list;
}

bool Load_Report_List(ReportsList& list, const QString& path)
{
    list = new_reports_list();
    QStringList lines;
    if (!read_lines(path, lines)) {
        report_failure(QStringLiteral("Cannot open file ") + path, QStringLiteral("Load_Report_List"));
        return false;
    }
    for (int number = 1; number <= lines.size(); ++number) {
        const QString& line = lines[number - 1];
        // Blank lines (a last line end written twice, say) hold no record.
        if (line.trimmed().isEmpty())
            continue;
        ReportEntry entry;
        if (!Read_Report_Line(line, entry)) {
            // A comment need not have the fields of a report.
            if (line.trimmed().startsWith(QLatin1Char('\'')))
                continue;
            report_failure(QStringLiteral("Invalid line in file") + path + QStringLiteral(" about line ") + QString::number(number),
                   QStringLiteral("Load_Report_List"));
            return false;
        }
        if (entry.is_comment())
            continue;
        list.append(entry);
    }
    return true;
}

bool Load_Personal_List(ReportsList& list, const QString& standard_path, const QString& personal_path,
                        QString& status)
{
    // No list set is no personalised list, as for the page heading beside it.
    if (personal_path.trimmed().isEmpty() || personal_path == standard_path) {
        status = QStringLiteral("no personalised file found");
        return true;
    }
    QStringList lines;
    if (!read_lines(personal_path, lines)) {
        report_failure(QStringLiteral("Cannot open personalised file ") + personal_path, QStringLiteral("Load_Personal_List"));
        return false;
    }
    status = QStringLiteral("found personalised file - ") + personal_path;
    for (int number = 1; number <= lines.size(); ++number) {
        const QString& line = lines[number - 1];
        if (line.trimmed().isEmpty() || line.trimmed().startsWith(QLatin1Char('\'')))
            continue;
        const QString where = QStringLiteral("Invalid line in file") + personal_path + QStringLiteral(" on line ")
                              + QString::number(number);
        ReportEntry entry;
        if (!Read_Report_Line(line, entry))
            report_failure(where, QStringLiteral("Load_Personal_List"));
        else if (!apply_personal_line(list, entry))
            report_failure(where + QStringLiteral(", unknown line type ") + entry.line_type, QStringLiteral("Load_Personal_List"));
    }
    return true;
}

QString report_file_path(const QString& report_file, const QString& personal_dir)
{
    if (report_file.startsWith(QLatin1Char('?'))) {
        const QString folder = personal_dir.isEmpty() ? QFileInfo(personal_list_path()).absolutePath() : personal_dir;
        return build_path(folder, report_file.mid(1));
    }
    return build_path(Settings().report_format_dir, report_file);
}
