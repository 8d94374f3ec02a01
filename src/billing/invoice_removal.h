#pragma once
// Deleting one invoice, or one line of it, from the Invoices screen. An
// invoice with receipts is not deleted; its lines may be, whatever it has
// received, and the balance is simply worked out again.

#include <QString>

// The module tag of the Invoices screen.
inline QString invoices_tag()
{
    return QStringLiteral("fInvoice");
}

// The number of receipts recorded against the invoice.
bool Count_Invoice_Receipts(int invoice_id, int& count);

enum class InvoiceDeletion {
    Deleted,      // the invoice and its lines are gone
    Not_Deleted,  // the statements ran but no invoice went: nothing was there
    Failed,       // reported (or refused with its own box), and nothing changed
};

// The invoice's lines and the invoice, in one transaction; the invoice also
// leaves Tmp_Invoices, which refers to it.
InvoiceDeletion Delete_Invoice(int invoice_id);

// One line of the invoice; `affected` is 1 when it went.
bool Delete_Invoice_Line(int line_id, int invoice_id, long long& affected);
