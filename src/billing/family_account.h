#pragma once
// A family's account as the money screens show it: the family's invoices,
// the receipts and lines of one invoice, and what is owed. Nothing here is
// stored; every figure is a sum of invoice lines and receipts, in currency.
//
// Each routine reports its own failure under the screen's module tag and the
// routine's name, and gives false.

#include "engine/currency.h"

#include <QString>
#include <QVector>

// One entry of a list: what it shows, and the key of its record.
struct AccountEntry {
    QString text;
    int id = 0;
    friend bool operator==(const AccountEntry&, const AccountEntry&) = default;
};

// The first names of the family's pupils, each followed by a blank; one
// blank when it has none.
bool Account_Pupil_Names(int family_id, QString& names, const QString& module);

// The family's invoices, newest first, shown as "<date>  <reason>" and
// " on <activity date>" for an activity's invoice; only those whose lines
// and receipts differ when `outstanding_only`.
bool Account_Family_Invoices(int family_id, bool outstanding_only, QVector<AccountEntry>& invoices,
                             const QString& module);

// The sum of the invoice's lines; 0 for an invoice without lines.
bool Account_Invoice_Total(int invoice_id, engine::Currency& total, const QString& module);

// The invoice's receipts, shown as "<amount> on <date>", and their sum.
bool Account_Invoice_Receipts(int invoice_id, QVector<AccountEntry>& receipts, engine::Currency& total,
                              const QString& module);

// What the family owes over all its invoices less all it has paid: above 0
// means it owes.
bool Account_Overall_Position(int family_id, engine::Currency& position, const QString& module);

// The invoice's lines: those for a pupil as "<pupil> --- <amount> <description>",
// then those for the family as "<amount> for <description>".
bool Account_Invoice_Lines(int invoice_id, QVector<AccountEntry>& lines, const QString& module);

// The text of an amount as the money screens show it: the locale's currency format.
QString Money_Shown(const engine::Currency& amount);
