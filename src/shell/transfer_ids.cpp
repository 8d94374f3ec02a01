#include "shell/transfer_ids.h"

int& Glob_Xfer_Family_id()
{
    static int family_id = -1;
    return family_id;
}

int& Glob_Xfer_Invoice_id()
{
    static int invoice_id = -1;
    return invoice_id;
}

int& Glob_Xfer_Pupil_id()
{
    static int pupil_id = -1;
    return pupil_id;
}
