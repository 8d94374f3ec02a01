#pragma once
// Deleting invoices in bulk. Each deletion is one transaction, and always
// goes receipts, then lines, then invoices. `count` is the number of
// invoices deleted.

// Every receipt, line and invoice in the database.
bool DB_Delete_All_Invoices(int& count);
// The invoices whose receipts equal their lines, with those receipts and lines.
bool DB_Delete_Paid_Invoices(int& count);
// Every invoice of a family whose part-paid invoices add up to nothing owed
// (one overpaid, another underpaid by as much), with receipts and lines.
bool DB_Delete_Balanced_Invoices(int& count);
// The invoices of the chosen families for the chosen terms (term_invoices)
// or activity dates, narrowed to lines of the chosen courses or activities
// when there are any. Refused, deleting nothing, when any of them has a receipt.
bool DB_Delete_Selected_Invoices(bool term_invoices, int& count);
// Empties Tmp_Invoices and deletes the invoices it listed.
bool DB_Delete_Tmp_Invoices(int& count);
