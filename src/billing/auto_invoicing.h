#pragma once
// The Automated Invoicing screen's state and commands, without widgets. The
// screen shows what this holds (status line, file name, pupil list, the
// labels of the chosen criteria, which set of pupils is in use) and calls a
// command for each button; questions and refusals come as message boxes.
// The command-line tool drives it the same way.

#include "database/tmp_tables_lock.h"

#include <QString>
#include <QStringList>
#include <array>

class AutoInvoicing {
public:
    // The set of pupils a run is for.
    enum class PupilSet {
        ChangedList,  // Opt_Saved_List: the pupils whose registers changed
        Selected,     // Opt_Selected: the pupils chosen in the criteria, or all
    };
    // The criteria labels, by selection: terms, courses, activities, pupils, activity dates.
    enum Criterion { Terms, Courses, Activities, Pupils, Activity_Dates, Criteria_Count };

    QString status;          // txt_Status
    QString filename;        // txt_Filename, the script of the last run
    QStringList pupil_list;  // lst_Selected_Pupils
    std::array<QString, Criteria_Count> amounts;  // lbl_All: "All", "One", "Some" or "?"
    QString term_name;       // lbl_Term_Name
    QString activity_date;   // lbl_Activity_Date
    PupilSet pupil_set = PupilSet::Selected;
    bool changed_list_enabled = false;  // whether Opt_Saved_List can be chosen

    // Each time the screen comes to the front: empties the temporary tables
    // and fills them again from the selection lists, chooses the set of
    // pupils and lists them. The first time, it takes the database's lock on
    // the temporary tables, which it keeps until unload: while this screen
    // is open no other run can change what it prepared.
    bool prepare();
    // When the screen unloads: empties the temporary tables and gives the lock back.
    bool unload();

    // The option buttons.
    void choose_changed_list();
    void choose_selected();

    // "Term Dates" under Invoice Families: the course costs script, the check
    // of the costs, then the term invoicing script. True when the invoices
    // were raised and committed. A failure or a cancel leaves the database
    // as it was before the command.
    bool insert_term();
    // "Activity Dates" under Invoice Families.
    bool insert_activities();

    // The deletions, each after its question; the outcome is in the status.
    // True when the deletion ran, whether or not there was anything to delete.
    bool delete_all();
    bool delete_paid();
    bool delete_selected_terms();
    bool delete_selected_activities();

    // "Run Script": the script named in `filename`.
    bool run_script();

private:
    // The commands that work from the prepared tables refuse to run on a
    // preparation that failed, rather than run on whatever the tables hold.
    bool ready_to_run();
    bool setup_pupil_set();
    void list_pupils();
    bool run_script_file(const QString& path, bool& could_not_open);
    bool delete_selected(bool term_invoices);

    TmpTablesLock lock_;
    bool prepared_ = false;
};
