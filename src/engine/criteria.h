#pragma once
// The criteria of FindFirst, read once and then tried on rows held in memory.
//
//   Family_Name > "Smith"      Term_id = 5 AND NOT Cancelled
//   day_off = #01/05/2026#     Title LIKE "Sm*"     Notes IS NOT NULL
//   Price BETWEEN 1 AND 2.5    Type IN ("A", 'B')   P.[Pupil id] <> Other_id
//
// Comparisons follow the engine: text ignores case, dates compare as dates
// (also against quoted date text), numbers as numbers even when they arrive
// as text, money as money, True is any non-zero value of a yes/no field, and
// nothing compared with Null matches.

#include "engine/field_type.h"

#include <QList>
#include <QString>
#include <QVariant>
#include <QVector>
#include <memory>

namespace engine {

struct CriteriaField {
    QString name;
    FieldType type = FieldType::Unknown;
};

struct CriteriaNode;

class Criteria {
public:
    // On failure raises the engine error and returns false:
    //   3077 "Syntax error in expression.",
    //   3070 for a name that is no field,
    //   3464 "Data type mismatch in criteria expression." for a literal that a
    //        numeric or date field can never equal ("Term_id = 'x'").
    // A qualified name "T.Field" that is no field's full name means "Field".
    bool parse(const QString& text, const QList<CriteriaField>& fields);

    // values[i] is the row's value of fields[i]; an invalid or null QVariant is
    // Null, and so is a value missing at the end. A date field's value may be
    // stored text "YYYY-MM-DD HH:MM:SS" or a QDateTime.
    bool matches(const QVector<QVariant>& values) const;

    bool is_parsed() const { return root_ != nullptr; }
    const QString& text() const { return text_; }

private:
    QString text_;
    std::shared_ptr<const CriteriaNode> root_;
};

// The engine's LIKE, case-insensitive: * any run, ? one character, # one
// digit, [abc] [a-z] one of, [!abc] none of. An unclosed '[' stands for itself.
bool jet_like(const QString& text, const QString& pattern);

}  // namespace engine
