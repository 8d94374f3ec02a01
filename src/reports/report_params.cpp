#include "reports/report_params.h"

#include "engine/msg_box.h"
#include "reports/report_runner.h"
#include "reports/report_selections.h"
#include "shell/app_globals.h"
#include "shell/selection_lists.h"

namespace {

using SetupRoutine = bool (*)(bool, QString&, QString&, int&);

struct KindOfSelection {
    QString caption;
    QString word;  // what a report that needs it is said to need
};

const KindOfSelection& kind_of(int kind)
{
    static const std::array<KindOfSelection, Param_Count> kinds = {{
        {QStringLiteral("Terms"), QStringLiteral("a Term")},
        {QStringLiteral("Courses"), QStringLiteral("a Course")},
        {QStringLiteral("Activities"), QStringLiteral("an Activity")},
        {QStringLiteral("Selected Pupils"), QStringLiteral("a Pupil")},
        {QStringLiteral("Activity Dates"), QStringLiteral("an Activity Date")},
        {QStringLiteral("Changed Pupils"),
         QStringLiteral("a list of Changed Pupils ") + QStringLiteral("as displayed on the Automated Invoicing Screen")},
    }};
    return kinds[kind];
}

// How many the list holds, by its bounds.
int chosen_count(int kind)
{
    switch (kind) {
    case Param_Terms: return Sel_Terms().upper_bound();
    case Param_Courses: return Sel_Courses().upper_bound();
    case Param_Activities: return Sel_Activities().upper_bound();
    case Param_Pupils: return Sel_Pupils().upper_bound();
    case Param_Dates: return Sel_Activity_Dates().upper_bound();
    case Param_Changed: return Changed_Pupils().upper_bound();
    default: return -1;
    }
}

QString amount_of(int kind)
{
    const int chosen = chosen_count(kind);
    if (chosen < 0)
        return QStringLiteral("?");
    if (chosen == 0)
        return QStringLiteral("All");
    return chosen == 1 ? QStringLiteral("One") : QStringLiteral("Some");
}

QString requirement_of(int level)
{
    switch (level) {
    case ParamNeed::Mandatory: return QStringLiteral("Mandatory");
    case ParamNeed::Optional: return QStringLiteral("Optional");
    default: return QStringLiteral("Unknown");
    }
}

// Runs the routine of the kind; status 0 for changed pupils when no list is kept.
void run_setup(int kind, const ParamNeed& need, QString& selection, QString& shown, int& status)
{
    SetupRoutine routine = nullptr;
    switch (kind) {
    case Param_Terms: routine = selections::Setup_Terms; break;
    case Param_Courses: routine = selections::Setup_courses; break;
    case Param_Activities: routine = selections::Setup_exams; break;
    case Param_Pupils: routine = need.families ? selections::Setup_Pupil_Families : selections::Setup_pupils; break;
    case Param_Dates: routine = selections::Setup_Dates; break;
    case Param_Changed:
        if (Glob_Keep_Changed_List())
            routine = need.families ? selections::Setup_Changed_Families : selections::Setup_Changed_Pupils;
        break;
    default: break;
    }
    selection.clear();
    shown.clear();
    status = 0;
    if (routine)
        routine(need.invoice_form, selection, shown, status);  // a failure is reported there, with status 0
}

// The new selection first, then what the request already held.
void add_to(QString& request, const QString& selection)
{
    request = request.isEmpty() ? selection : selection + QStringLiteral(" AND ") + request;
}

}  // namespace

ParamNeed decode_param_byte(quint8 byte)
{
    ParamNeed need;
    need.record_selection = (byte & 16) != 0;
    need.invoice_form = (byte & 8) != 0;
    need.families = (byte & 4) != 0;
    need.level = byte & 3;
    return need;
}

QString param_caption(int kind)
{
    return kind_of(kind).caption;
}

void hide_rows(ParamRows& rows)
{
    for (ParamRow& row : rows)
        row = ParamRow{};
}

bool Report_Params(const ReportEntry& entry, ParamRows& rows)
{
    GCR_Group_Selection() = entry.group_selection;
    GCR_Record_Selection() = entry.record_selection;
    for (int kind = 0; kind < Param_Count; ++kind) {
        const ParamNeed need = decode_param_byte(entry.params[kind]);
        ParamRow& row = rows[kind];
        row.visible = need.level != ParamNeed::Not_Used;
        if (!row.visible)
            continue;
        row.requirement = requirement_of(need.level);
        row.amount = amount_of(kind);
        QString selection, shown;
        int status = 0;
        run_setup(kind, need, selection, shown, status);
        if (status == 1)
            add_to(need.record_selection ? GCR_Record_Selection() : GCR_Group_Selection(), selection);
        else if (need.level == ParamNeed::Mandatory) {
            engine::MsgBox(QStringLiteral("This report needs ") + kind_of(kind).word + QStringLiteral("."),
                           engine::mb::OkOnly, App_Title());
            return false;
        }
        row.shown = shown;
    }
    return true;
}

void Report_Formulae(const ReportEntry& entry)
{
    GCR_Formula_Name() = entry.formula_name;
    GCR_Formula_Value() = entry.formula_value;
}

void Report_Notices(const ReportEntry& entry, int chosen)
{
    GCR_Invoice_Type_Value().clear();
    if (entry.notices == 3 && chosen >= 1 && chosen <= 6)
        GCR_Invoice_Type_Value() = QString::number(chosen);
}

void Add_Invoice_Selection()
{
    QString selection;
    int status = 0;
    if (selections::Setup_Invoices(selection, status) && status == 1)
        add_to(GCR_Group_Selection(), selection);
}
