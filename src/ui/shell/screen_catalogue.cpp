#include "ui/shell/screen_catalogue.h"

#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/report_numbers.h"
#include "ui/activities/frm_activity_dates.h"
#include "ui/activities/frm_exam.h"
#include "ui/activities/frm_exam_register.h"
#include "ui/admin/frm_change_defaults.h"
#include "ui/admin/frm_db_stats.h"
#include "ui/admin/frm_dbchange.h"
#include "ui/admin/frm_dbcontrol.h"
#include "ui/billing/frm_auto_invoice.h"
#include "ui/billing/frm_invoice_lines.h"
#include "ui/billing/frm_invoices.h"
#include "ui/billing/frm_receipts.h"
#include "ui/calendar/frm_dates.h"
#include "ui/courses/frm_courses.h"
#include "ui/courses/frm_register.h"
#include "ui/exams/frm_exam_list.h"
#include "ui/exams/frm_exam_times.h"
#include "ui/people/frm_family.h"
#include "ui/people/frm_pupil.h"
#include "ui/people/frm_pupil_import.h"
#include "ui/people/frm_teachers.h"
#include "ui/reports/frm_preferences.h"
#include "ui/reports/frm_report_params.h"
#include "ui/reports/frm_reports.h"
#include "ui/reports/frm_standard_text.h"
#include "ui/shell/frm_about.h"
#include "ui/shell/frm_auditlog.h"
#include "ui/shell/switch_screen.h"

#include <QApplication>
#include <QWidget>
#include <functional>
#include <map>

namespace {

// One line a screen: its form name and how it is made.
const std::map<QString, std::function<QWidget*()>>& catalogue()
{
    static const std::map<QString, std::function<QWidget*()>> screens = {
        {QStringLiteral("frm_About"), [] { return new frm_About; }},
        {QStringLiteral("frm_Activity_Dates"), [] { return new frm_Activity_Dates; }},
        {QStringLiteral("frm_auditlog"), [] { return new frm_auditlog; }},
        {QStringLiteral("frm_Auto_Invoice"), [] { return new frm_Auto_Invoice; }},
        {QStringLiteral("frm_Change_Defaults"), [] { return new frm_Change_Defaults; }},
        {QStringLiteral("frm_Courses"), [] { return new frm_Courses; }},
        {QStringLiteral("frm_db_stats"), [] { return new frm_db_stats; }},
        {QStringLiteral("frm_DBChange"), [] { return new frm_DBChange; }},
        {QStringLiteral("frm_DBControl"), [] { return new frm_DBControl; }},
        {QStringLiteral("frm_Dates"), [] { return new frm_Dates; }},
        {QStringLiteral("frm_ExamList"), [] { return new frm_ExamList; }},
        {QStringLiteral("frm_ExamTimes"), [] { return new frm_ExamTimes; }},
        {QStringLiteral("frm_Exam"), [] { return new frm_Exam; }},
        {QStringLiteral("frm_ExamRegister"), [] { return new frm_ExamRegister; }},
        {QStringLiteral("frm_Family"), [] { return new frm_Family; }},
        {QStringLiteral("frm_Invoice_Lines"), [] { return new frm_Invoice_Lines; }},
        {QStringLiteral("frm_Invoices"), [] { return new frm_Invoices; }},
        {QStringLiteral("frm_Preferences"), [] { return new frm_Preferences; }},
        {QStringLiteral("frm_Pupil"), [] { return new frm_Pupil; }},
        {QStringLiteral("frm_Pupil_Import"), [] { return new frm_Pupil_Import; }},
        {QStringLiteral("frm_Receipts"), [] { return new frm_Receipts; }},
        {QStringLiteral("frm_Register"), [] { return new frm_Register; }},
        {QStringLiteral("frm_Report_Params"), [] { return new frm_Report_Params; }},
        {QStringLiteral("frm_Reports"), [] { return new frm_Reports; }},
        {QStringLiteral("frm_Standard_Text"), [] { return new frm_Standard_Text; }},
        {QStringLiteral("frm_Teachers"), [] { return new frm_Teachers; }},
    };
    return screens;
}

}  // namespace

QWidget* Loaded_Screen(const QString& form_name)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows)
        if (window->objectName() == form_name && !is_unloading(window))
            return window;
    return nullptr;
}

QWidget* Load_Screen(const QString& form_name)
{
    if (QWidget* loaded = Loaded_Screen(form_name))
        return loaded;
    const auto make = catalogue().find(form_name);
    return make == catalogue().end() ? nullptr : make->second();
}

QWidget* Go_To_Screen(QWidget* me, const QString& form_name, const std::function<void(QWidget*)>& before_showing)
{
    QWidget* screen = Load_Screen(form_name);
    if (!screen) {
        // Every command names a screen of the catalogue; a name outside it is a fault of the program.
        Report_Error(report::Unexpected, QStringLiteral("There is no screen named ") + form_name, engine::mb::Critical,
                     QStringLiteral("screens"), QStringLiteral("Go_To_Screen"));
        return nullptr;
    }
    if (before_showing)
        before_showing(screen);
    Switch_Screen(me, screen, false);
    return screen;
}
