#include "shell/selection_lists.h"

IdList& Sel_Terms() { static IdList list; return list; }
IdList& Sel_Courses() { static IdList list; return list; }
IdList& Sel_Activities() { static IdList list; return list; }
IdList& Sel_Pupils() { static IdList list; return list; }
DateList& Sel_Activity_Dates() { static DateList list; return list; }
IdList& Changed_Pupils() { static IdList list; return list; }

bool& Glob_Keep_Changed_List()
{
    static bool keep = false;
    return keep;
}

void Reset_Changed_Lists()
{
    Changed_Pupils().reset();
    Sel_Terms().reset();
    Sel_Courses().reset();
    Sel_Activities().reset();
    Sel_Pupils().reset();
    Sel_Activity_Dates().reset();
}

void Glob_Add_Changed_Pupil(qint32 pupil_id)
{
    if (!Glob_Keep_Changed_List())
        return;
    if (Changed_Pupils().contains(pupil_id))
        return;
    Changed_Pupils().append(pupil_id);
}
