// Preparing a run: the temporary tables, the criteria labels and the pupil list.

#include "billing/auto_invoicing.h"

#include "billing/billing_words.h"
#include "billing/tmp_tables.h"
#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "script/current_database.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/selection_lists.h"

namespace {

QString amount_of(int chosen, bool set_up)
{
    if (!set_up)
        return QStringLiteral("?");
    if (chosen == 0)
        return QStringLiteral("All");
    return chosen == 1 ? QStringLiteral("One") : QStringLiteral("Some");
}

}  // namespace

bool AutoInvoicing::prepare()
{
    prepared_ = false;
    if (!lock_.acquire(Current_Db_Name(), billing_tag())) {
        amounts.fill(QStringLiteral("?"));
        pupil_list.clear();
        return false;
    }
    // Tables that could not be emptied would mix this run with an earlier one.
    if (!DB_Clear_Tmp_Tables()) {
        amounts.fill(QStringLiteral("?"));
        return false;
    }

    const bool terms = Setup_Terms(term_name);
    const bool courses = Setup_Courses();
    const bool activities = Setup_exams(activity_date);
    amounts[Terms] = amount_of(Sel_Terms().upper_bound(), terms);
    amounts[Courses] = amount_of(Sel_Courses().upper_bound(), courses);
    amounts[Activities] = amount_of(Sel_Activities().upper_bound(), activities);
    amounts[Activity_Dates] = amount_of(Sel_Activity_Dates().upper_bound(), activities);

    changed_list_enabled = Glob_Keep_Changed_List() && !Changed_Pupils().is_empty();
    pupil_set = changed_list_enabled ? PupilSet::ChangedList : PupilSet::Selected;
    const bool pupils = setup_pupil_set();
    amounts[Pupils] = amount_of(Sel_Pupils().upper_bound(), pupils);
    list_pupils();
    prepared_ = terms && courses && activities && pupils;
    return prepared_;
}

bool AutoInvoicing::unload()
{
    const bool cleared = !lock_.held() || DB_Clear_Tmp_Tables();
    lock_.release();
    prepared_ = false;
    return cleared;
}

void AutoInvoicing::choose_changed_list()
{
    pupil_set = PupilSet::ChangedList;
    if (!setup_pupil_set()) {
        amounts[Pupils] = QStringLiteral("?");
        prepared_ = false;
    }
    list_pupils();
}

void AutoInvoicing::choose_selected()
{
    pupil_set = PupilSet::Selected;
    if (!setup_pupil_set()) {
        amounts[Pupils] = QStringLiteral("?");
        prepared_ = false;
    }
    list_pupils();
}

bool AutoInvoicing::ready_to_run()
{
    if (prepared_)
        return true;
    engine::MsgBox(QStringLiteral("The chosen criteria could not be set up, so nothing has been done.") + QLatin1Char('\n')
                       + QStringLiteral("Please choose them again using Criteria."),
                   engine::mb::OkOnly, App_Title());
    return false;
}

bool AutoInvoicing::setup_pupil_set()
{
    return pupil_set == PupilSet::ChangedList ? DB_Setup_Changed_Pupils() : Setup_Pupils();
}

void AutoInvoicing::list_pupils()
{
    pupil_list.clear();
    if (pupil_set == PupilSet::ChangedList && Changed_Pupils().is_empty()) {
        pupil_list << QStringLiteral("None Stored");
        return;
    }
    if (pupil_set == PupilSet::Selected && Sel_Pupils().is_empty()) {
        pupil_list << QStringLiteral("All Pupils selected");
        return;
    }
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::Recordset> names = db ? db->OpenRecordset(QStringLiteral("Qry_Select_Tmp_Pupil_Names")) : nullptr;
    if (!names) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Critical, billing_tag(),
                     QStringLiteral("Setup_Pupil_List"));
        return;
    }
    for (names->MoveFirst(); !names->at_eof(); names->MoveNext())
        pupil_list << names->Fields(QStringLiteral("DisplayName")).toString();
}
