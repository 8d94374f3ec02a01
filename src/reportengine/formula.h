#pragma once
// The formula language of report files: selections, formula fields, alerts
// and conditional suppression are all written in it.
//
//   ({invoices.invoice_term_id} = 7 OR {invoices.invoice_term_id} = 8)
//   {Exam_Results.Results_Date} = Date(2005,3,14) and not IsNull({Pupils.Pupil_FirstName})
//   if {@Owed} > 0 then "Please pay by " & ToText({@Due}, "dd/MM/yyyy") else "Thank you"
//   {Courses.Course_Day} in [2, 3, 4]
//   RunningSum({@Movement}, {Families.Family_id})
//
// Fields are {Table.Column}, other formulas {@Name}. Words (and, or, not, in,
// if, then, else, true, false) and function names are read in any case.
// Text is "..." or '...', a doubled quote standing for one. A comment runs
// from // to the end of its line. Precedence, loosest first: if … then … else,
// or, and, not, comparisons and in, & (joins text; a null joins as empty),
// + and -, * and /, unary minus.

#include "reportengine/formula_value.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

namespace reportengine {

struct FormulaNode;

// Why a formula could not be read: where (0-based character position) and what.
struct FormulaError {
    int position = 0;
    QString message;
};

// A field as a formula names it: {Table.Column}. Table is empty when the
// braces hold a column alone.
struct FieldName {
    QString table;
    QString column;
    QString written() const;  // "{Table.Column}"
};

// What a summary works over: a field, or another formula of the report
// evaluated row by row.
struct SummaryOf {
    std::optional<FieldName> field;
    QString formula;  // the name, when it is a formula
    QString written() const;  // "{Table.Column}" or "{@Name}"
};

// What a formula reads while it is evaluated.
class FormulaContext {
public:
    virtual ~FormulaContext() = default;
    // The current row's value of a field; nothing when the report has no such field.
    virtual std::optional<Value> field(const FieldName& name) const = 0;
    // The value of another formula of the report, {@Name}; nothing when there is none.
    virtual std::optional<Value> formula(const QString& name) const;
    // Sum, Count, Average, Maximum, Minimum of a field or formula over the
    // current group (`group`: the group's field as the report writes it,
    // "{Families.Family_Name}" or "{@Key}") or over the whole report (empty).
    // RunningSum adds up the group's rows up to the current one.
    virtual std::optional<Value> summary(const QString& function, const SummaryOf& of, const QString& group) const;
    // A field of the row `offset` rows before (-1) or after (1) the current
    // one: null beyond the first or last row; nothing when the report has no such field.
    virtual std::optional<Value> neighbour(const FieldName& field, int offset) const;
    virtual int page_number() const { return 1; }
    virtual int total_page_count() const { return 1; }
    virtual QDateTime print_date() const;
};

class Formula {
public:
    Formula();
    ~Formula();
    Formula(const Formula&);
    Formula& operator=(const Formula&);

    // Reads a formula; false with the error's position and words when it can't.
    // An empty text is a valid formula that gives null (an empty selection selects all).
    bool parse(const QString& text, FormulaError& error);
    // The same, the error in words for the user: "The <what> <text> cannot be
    // read at position <n>: <why>".
    bool parse(const QString& text, const QString& what, QString& error);
    bool is_empty() const { return !root_; }
    const QString& text() const { return text_; }
    const FormulaNode* root() const { return root_.get(); }

    // The fields and formulas the text names, in the order written.
    QList<FieldName> fields() const;
    QStringList formulas() const;

    // Evaluates against a row; false with the error's words when it can't
    // (a field the report lacks, text added to a number, a division by zero).
    bool evaluate(const FormulaContext& context, Value& result, QString& error) const;
    // A selection: true when the formula gives yes; an empty one selects everything.
    bool selects(const FormulaContext& context, bool& selected, QString& error) const;

private:
    QString text_;
    std::shared_ptr<const FormulaNode> root_;
};

}  // namespace reportengine
