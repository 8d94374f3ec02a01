// Preparing a run: the temporary tables, the criteria labels and the pupil list.

#include "billing/auto_invoicing.h"

#include "billing/billing_words.h"
#include "billing/tmp_tables.h"
#include "engine/database.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "script/current_database.h"
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
    bool prepared = DB_Clear_Tmp_Tables();

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
    return prepared && terms && courses && activities && pupils;
}

bool AutoInvoicing::unload()
{
    return DB_Clear_Tmp_Tables();
}

void AutoInvoicing::choose_changed_list()
{
    pupil_set = PupilSet::ChangedList;
    setup_pupil_set();
    list_pupils();
}

void AutoInvoicing::choose_selected()
{
    pupil_set = PupilSet::Selected;
    setup_pupil_set();
    list_pupils();
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
