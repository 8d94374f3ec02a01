#pragma once
// Money received against an invoice, and debts written off. A receipt belongs
// to one invoice; each routine is one statement, so nothing here needs a
// transaction. Failures are reported under the Money Received screen's tag
// with the routine's name, and give false.

#include "engine/currency.h"

#include <QDateTime>
#include <QString>

struct ReceiptValues {
    int invoice_id = 0;
    engine::Currency amount;
    QString method;
    QString notes;
    QDateTime date;
};

// The module tag of the Money Received screen.
inline QString receipts_tag()
{
    return QStringLiteral("fReceipt");
}

bool Insert_Receipt(const ReceiptValues& receipt);
// Changes the receipt `receipt_id` of the invoice `receipt.invoice_id`.
bool Update_Receipt(int receipt_id, const ReceiptValues& receipt);
bool Delete_Receipt(int receipt_id);
// Reads a receipt; `found` is false when there is none with that id.
bool Read_Receipt(int receipt_id, ReceiptValues& receipt, bool& found);

// Writes off what is outstanding on an invoice by a line of type 9 for minus
// that amount, so that the invoice's total falls by it. `affected` is the
// number of lines added. A blank description becomes "Amount written off".
bool Insert_Bad_Debt(int invoice_id, const QString& description, const engine::Currency& outstanding,
                     long long& affected);
