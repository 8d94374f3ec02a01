#pragma once
// The keys by which the Pupils, Invoices and Money Received screens hand the
// user over to one another: the family, invoice and pupil to show on
// arrival. -1 means none.

int& Glob_Xfer_Family_id();
int& Glob_Xfer_Invoice_id();
int& Glob_Xfer_Pupil_id();
