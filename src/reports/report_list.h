#pragma once
// The reports a school can run: the report list file zrepfmt.lst in the
// standard report folder, edited line by line by a personalised list of the
// same form. Which reports exist is data, so a school adds one by adding a
// line and a report file.
//
// A line holds 16 comma-separated fields, text in double quotes:
//   type, id, file, name, group selection, record selection,
//   terms, courses, activities, pupils, activity dates, changed pupils,
//   notices, formula name, formula value, pre-script
// Type "*" is a heading, "'" a comment, anything else a report. A file
// beginning with "?" lies beside the personalised list.

#include <QString>
#include <QVector>
#include <array>

// The selection kinds a report may need, in the order of a line's bytes.
enum ParamKind { Param_Terms, Param_Courses, Param_Activities, Param_Pupils, Param_Dates, Param_Changed, Param_Count };

struct ReportEntry {
    QString line_type;
    qint16 report_id = 0;
    QString report_file;
    QString report_name;
    QString group_selection;
    QString record_selection;
    std::array<quint8, Param_Count> params{};  // param_terms ... param_changed
    quint8 notices = 0;                        // 3: the report takes a notice text
    QString formula_name;
    QString formula_value;
    QString pre_script;

    bool is_heading() const { return line_type.trimmed() == QLatin1String("*"); }
    bool is_comment() const { return line_type.trimmed() == QLatin1String("'"); }
};

using ReportsList = QVector<ReportEntry>;

// A list holding only the built-in first entry, "Choose myself" (id 1,
// notices 1, everything else blank): the report the user picks as a file.
ReportsList new_reports_list();

// Reads one line's 16 fields. False (engine error set) when the line hasn't
// 16 fields, or a number field isn't a number of its size.
bool Read_Report_Line(const QString& line, ReportEntry& entry);

// The standard list: zrepfmt.lst in the report format folder ($XD).
QString standard_list_path();
// The personalised list ($RL); in force when it isn't the standard one.
QString personal_list_path();

// Starts `list` afresh and appends the reports of the standard list at
// `path`. A file that can't be opened, or a line that can't be read, is
// reported (module "freports") and ends the reading with false; what was
// read before a bad line stays.
bool Load_Report_List(ReportsList& list, const QString& path);

// Applies the personalised list at `personal_path` to `list`, line by line:
// "+" appends a report, "*" a heading, "-" takes the report of that id off
// the list, "=" replaces the fields given of the report of that id, "!" swaps
// one report file for another, "'" is a comment. A line of another type, or
// one that can't be read, is reported and passed over. `status` says whether
// a personalised list was found: none is when its path is blank or the
// standard list's. False when it couldn't be opened.
bool Load_Personal_List(ReportsList& list, const QString& standard_path, const QString& personal_path,
                        QString& status);

// The full path of a report file of the list: in the standard report folder,
// or, for a name beginning with "?", in `personal_dir` (the personalised
// list's folder, the standard list's when none is in force).
QString report_file_path(const QString& report_file, const QString& personal_dir);
