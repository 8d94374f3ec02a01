#include "reports/report_generation.h"

#include "engine/err.h"
#include "engine/msg_box.h"
#include "reportengine/report_file.h"
#include "reports/personal_header.h"
#include "reports/report_runner.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/file_checks.h"
#include "shell/install_folder.h"
#include "shell/locale_formats.h"
#include "shell/settings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

using reportengine::ObjectKind;
using reportengine::ReportDefinition;
using reportengine::ReportFileError;
using reportengine::ReportObject;

namespace {

const QString header_file = QStringLiteral("PrtHead.rpt");
const QString list_file = QStringLiteral("zrepfmt.lst");
// Standard report files keep blanks between the parts of a date, whatever
// the machine's separator: only the order and the time separator follow it.
const QString date_separator = QStringLiteral(" ");

int ask(const QString& text)
{
    return engine::MsgBox(text, engine::mb::YesNo | engine::mb::Question, App_Title());
}

void report_detected(const QString& message, const QString& routine, int style = engine::mb::Critical)
{
    Report_Error(report::Detected, message, style, report_runner_tag(), routine);
}

// A failure of the file system, as the run-time error the report shows.
void report_file_failure(const QString& message, const QString& routine, const QString& cause)
{
    engine::Err().Raise(engine::vberr::PermissionDenied, cause);
    Report_Error(report::Unexpected, message, engine::mb::Critical, report_runner_tag(), routine);
}

bool same_path(const QString& a, const QString& b)
{
    return QDir::cleanPath(QFileInfo(a).absoluteFilePath()) == QDir::cleanPath(QFileInfo(b).absoluteFilePath());
}

// Copies one file over another; QFile::copy won't replace a file.
bool copy_over(const QString& from, const QString& to, QString& cause)
{
    if (QFileInfo::exists(to) && !QFile::remove(to)) {
        cause = QStringLiteral("Cannot replace ") + to;
        return false;
    }
    QFile source(from);
    if (!source.copy(to)) {
        cause = from + QStringLiteral(": ") + source.errorString();
        return false;
    }
    return true;
}

// Every file of a folder (not its folders) into another, which is made if needed.
bool copy_files(const QString& from, const QString& to, QString& cause)
{
    if (!QDir().mkpath(to)) {
        cause = QStringLiteral("Cannot make the folder ") + to;
        return false;
    }
    const QDir source(from);
    if (!source.exists()) {
        cause = QStringLiteral("No folder ") + from;
        return false;
    }
    for (const QString& name : source.entryList(QDir::Files | QDir::Hidden, QDir::Unsorted))
        if (!copy_over(source.filePath(name), QDir(to).filePath(name), cause))
            return false;
    return true;
}

// The heading's content, read before any copying, so that a heading standing
// in the folder being written keeps what it said.
bool read_header(const QString& path, QByteArray& content, QString& cause)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        cause = path + QStringLiteral(": ") + file.errorString();
        return false;
    }
    content = file.readAll();
    return true;
}

bool write_header(const QString& path, const QByteArray& content, QString& cause)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(content) != content.size()) {
        cause = path + QStringLiteral(": ") + file.errorString();
        return false;
    }
    return true;
}

QString copy_message(const QString& generate_dir, const QString& source_dir)
{
    return QStringLiteral("Generating files into ") + generate_dir + QLatin1Char('\n')
           + QStringLiteral("using standard files from ") + source_dir;
}

// Regenerating the copy in use: asked as an overwrite. Its files are taken
// aside before the folder goes, since they are also what the new copy is
// made from; `copy_from` is then where they went.
bool overwrite_copy_in_use(const QString& message, const QString& folder, QTemporaryDir& aside, QString& copy_from)
{
    const QString routine = QStringLiteral("Setup_Copy_Directories ");
    if (ask(message + QLatin1Char('\n') + QStringLiteral("The reports that you are currently using will be overwritten.")
            + QLatin1Char('\n') + QStringLiteral("Overwrite?"))
        != engine::answer::Yes)
        return false;
    QString cause;
    if (!aside.isValid() || !copy_files(folder, aside.path(), cause)) {
        report_file_failure(QStringLiteral("Unexpected error "), routine, cause);
        return false;
    }
    copy_from = aside.path();
    if (QFileInfo::exists(folder) && !QDir(folder).removeRecursively()) {
        report_file_failure(QStringLiteral("Unexpected error "), routine, QStringLiteral("Cannot delete ") + folder);
        return false;
    }
    return true;
}

// The report list in force belongs neither to the standard files nor to the
// copy: a personalised list, which the user must choose again afterwards.
void warn_of_own_list(const QString& source_dir, const QString& generate_dir)
{
    const QString& list = Settings().report_list;
    if (same_path(list, build_path(source_dir, list_file)) || same_path(list, build_path(generate_dir, list_file)))
        return;
    engine::MsgBox(QStringLiteral("The default report list file that you are currently using ")
                       + QStringLiteral(" is set incorrectly.  If you have a personalised list of ")
                       + QStringLiteral("reports, you must change to it after generation. ")
                       + QStringLiteral("(From the Main Menu, select Change Defaults.)"),
                   engine::mb::OkOnly | engine::mb::Exclamation, App_Title());
}

// The subreport object that an entry names, in its area and section.
const ReportObject* kept_subreport(ReportDefinition& report, const GCR_Subreport& kept)
{
    reportengine::ReportArea* area = report.area(kept.area);
    if (!area || kept.section < 1 || kept.section > static_cast<int>(area->sections.size()))
        return nullptr;
    for (const ReportObject& object : area->sections[kept.section - 1].objects)
        if (object.kind == ObjectKind::Subreport && object.file == kept.name)
            return &object;
    return nullptr;
}

// Rewrites one report file in place; false once reported.
bool generate_one(const QString& path)
{
    for (GCR_Subreport& kept : GCR_Subreports())
        kept = GCR_Subreport{};
    GCR_Subreport_Count() = 0;
    const QString name = QFileInfo(path).fileName();
    ReportDefinition report;
    ReportFileError error;
    if (!reportengine::read_report_file(path, report, error)) {
        report_detected(QStringLiteral("Unable to open the report ") + path,
                        QStringLiteral("GCR_Generate_Reports : ") + error.text());
        return false;
    }
    if (!Set_Locale_in_Report(report, name) || !Handle_Subreports(report, name)) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error in report ") + name, engine::mb::Critical,
                     report_runner_tag(), QStringLiteral("GCR_Generate_Reports"));
        return false;
    }
    if (!reportengine::write_report_file(report, path, error)) {
        report_file_failure(QStringLiteral("Unexpected error in report ") + name, QStringLiteral("GCR_Generate_Reports"),
                            error.text());
        return false;
    }
    return true;
}

}  // namespace

quint8& GCR_Generate_State()
{
    static quint8 state = generate_state::Idle;
    return state;
}

std::array<GCR_Subreport, GCR_Max_Subreports>& GCR_Subreports()
{
    static std::array<GCR_Subreport, GCR_Max_Subreports> subreports;
    return subreports;
}

short& GCR_Subreport_Count()
{
    static short count = 0;
    return count;
}

bool Setup_Copy_Directories(QString& header_path, QString& source_dir, QString& generate_dir)
{
    const QString routine = QStringLiteral("Setup_Copy_Directories");
    source_dir = Settings().report_format_dir;
    generate_dir = build_path(Install_Folder(), generate_folder_name());

    QString message = copy_message(generate_dir, source_dir) + QLatin1Char('\n');
    if (!header_path.isEmpty()) {
        message += QStringLiteral(" replacing headers with the personalised header in ") + header_path;
    } else {
        header_path = build_path(source_dir, header_file);
        if (!QFileInfo(header_path).isFile()) {
            report_detected(QStringLiteral("Could not find a header file in ") + source_dir + QStringLiteral(" as ")
                                + header_file,
                            routine);
            return false;
        }
        message += QStringLiteral(" with the standard header in ") + header_path;
    }

    QByteArray header;
    QString cause;
    if (!read_header(header_path, header, cause)) {
        report_file_failure(QStringLiteral("Unexpected error "), routine, cause);
        return false;
    }
    QTemporaryDir aside;
    QString copy_from = source_dir;
    if (same_path(source_dir, generate_dir)) {
        if (!overwrite_copy_in_use(message, generate_dir, aside, copy_from))
            return false;
    } else if (ask(message + QLatin1Char('\n') + QStringLiteral("About to create a new folder with report files.")
                   + QLatin1Char('\n') + QStringLiteral("Continue?"))
               != engine::answer::Yes) {
        return false;
    }

    warn_of_own_list(source_dir, generate_dir);

    if (!copy_files(copy_from, generate_dir, cause) || !write_header(build_path(generate_dir, header_file), header, cause)) {
        report_file_failure(QStringLiteral("Unexpected error "), routine, cause);
        return false;
    }
    return true;
}

bool GCR_Generate_Reports(QString& new_report_dir, QString& new_list_file)
{
    GCR_Generate_State() = generate_state::Idle;
    if (Glob_Standard_Formats()
        && ask(QStringLiteral("There are no changes needed to the standard reports.") + QLatin1Char('\n')
               + QStringLiteral("The generate will only make a copy of all the files.") + QLatin1Char('\n')
               + QStringLiteral("Do you want to make a copy?"))
               != engine::answer::Yes)
        return false;

    GCR_Generate_State() = generate_state::Running;
    QString personal_dir;
    QString header_path;
    GCR_Find_Personal_Header(personal_dir, header_path);
    QString source_dir;
    QString generate_dir;
    if (!Setup_Copy_Directories(header_path, source_dir, generate_dir))
        return false;

    const QDir generated(generate_dir);
    for (const QString& name : generated.entryList(QDir::Files | QDir::Hidden, QDir::Unsorted)) {
        // The one place where the program lets the user act during a run.
        QCoreApplication::processEvents();
        if (GCR_Generate_State() != generate_state::Running) {
            report_detected(QStringLiteral("Generation Abandoned - generate directory being deleted"),
                            QStringLiteral("GCR_Generate_Reports"), engine::mb::Information);
            QDir(generate_dir).removeRecursively();
            return false;
        }
        if (QFileInfo(name).suffix().compare(QStringLiteral("rpt"), Qt::CaseInsensitive) != 0)
            continue;
        if (!generate_one(generated.filePath(name)))
            return false;
    }
    new_report_dir = generate_dir;
    new_list_file = build_path(generate_dir, list_file);
    GCR_Generate_State() = generate_state::Idle;
    return true;
}

bool Set_Locale_in_Report(ReportDefinition& report, const QString& name)
{
    for (int a = 1; a <= report.area_count(); ++a) {
        std::vector<reportengine::ReportSection>& sections = report.area(a)->sections;
        for (int s = 1; s <= static_cast<int>(sections.size()); ++s) {
            for (ReportObject& object : sections[s - 1].objects) {
                if (object.kind == ObjectKind::Field) {
                    object.format.date_order = Glob_Date_Order();
                    object.format.date_separator_1 = date_separator;
                    object.format.date_separator_2 = date_separator;
                    object.format.time_separator = Glob_Time_Sep();
                } else if (object.kind == ObjectKind::Subreport) {
                    if (++GCR_Subreport_Count() > GCR_Max_Subreports) {
                        report_detected(QStringLiteral("too many subreports in ") + name,
                                        QStringLiteral("Set_Locale_in_Report"));
                        return false;
                    }
                    GCR_Subreports()[GCR_Subreport_Count() - 1] =
                        GCR_Subreport{object.file, static_cast<short>(a), static_cast<short>(s)};
                }
            }
        }
    }
    return true;
}

bool Handle_Subreports(ReportDefinition& report, const QString& name)
{
    const QString routine = QStringLiteral("Handle_Subreports");
    const QDir beside(QFileInfo(report.file).absolutePath());
    // The entries of this report only: a subreport's own count adds to the
    // same tally, but its subreports stand in another file.
    const int kept = qMin<int>(GCR_Subreport_Count(), GCR_Max_Subreports);
    const std::array<GCR_Subreport, GCR_Max_Subreports> entries = GCR_Subreports();
    for (int i = 0; i < kept; ++i) {
        const GCR_Subreport& entry = entries[i];
        if (entry.name.isEmpty())
            continue;
        const ReportObject* object = kept_subreport(report, entry);
        ReportDefinition subreport;
        ReportFileError error;
        const QString path = beside.filePath(entry.name);
        if (!object) {
            report_detected(QStringLiteral("Unexpected error "), routine + QStringLiteral(" : ") + name);
            return false;
        }
        if (!reportengine::read_report_file(path, subreport, error)) {
            report_detected(QStringLiteral("Unexpected error "), routine + QStringLiteral(" : ") + error.text());
            return false;
        }
        if (!Set_Locale_in_Report(subreport, entry.name))
            return false;
        if (!reportengine::write_report_file(subreport, path, error)) {
            report_file_failure(QStringLiteral("Unexpected error "), routine, error.text());
            return false;
        }
    }
    return true;
}
