#pragma once
// Reading the engine's SQL dialect, and the one compatibility step that direct
// SQL (built by the program or read from a school's script files) passes
// through before SQLite sees it.

#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

namespace engine {

enum class JetTokenKind {
    Space,         // blanks and line ends
    Comment,       // -- to the line end, or /* ... */
    Word,          // a name or a keyword
    Number,
    SingleQuoted,  // 'text', '' inside
    DoubleQuoted,  // "text", "" inside
    Bracketed,     // [name]
    BackQuoted,    // `name`
    DateLiteral,   // #mm/dd/yyyy [hh:nn[:ss] [AM|PM]]#
    Symbol,        // operators and punctuation; <> <= >= != == || as one token
};

struct JetToken {
    JetTokenKind kind = JetTokenKind::Symbol;
    QString text;  // exactly as written

    bool is_symbol(QLatin1StringView symbol) const { return kind == JetTokenKind::Symbol && text == symbol; }
    bool is_word(QLatin1StringView word) const
    {
        return kind == JetTokenKind::Word && text.compare(word, Qt::CaseInsensitive) == 0;
    }
};

// Splits SQL text into tokens whose texts, joined, give back the text.
// Unterminated strings, names and comments run to the end.
QList<JetToken> tokenize_jet_sql(const QString& sql);

// The value of a quoted string token, quotes removed and doubled quotes undone.
QString quoted_text_value(const JetToken& token);

// The name inside a [bracketed] or `quoted` name token.
QString quoted_name_value(const JetToken& token);

// Reads what stands between the #s of a date literal, month first always:
// "mm/dd/yyyy" (or with '-'), "yyyy-mm-dd", either followed by a time
// "hh:nn[:ss]" with optional AM/PM, or a time alone, which falls on the zero
// date. Two-digit years 00-29 are 2000-2029. No date for anything else.
std::optional<QDateTime> parse_jet_date_literal(const QString& body);

// How deep brackets may stand inside one another in a statement or a
// criteria text. Far beyond anything a person writes; it keeps the readers,
// which go one level down per bracket, well inside their stack, and SQLite's
// parser, whose stack ends near a hundred levels, inside its own.
inline constexpr int max_bracket_depth = 64;

// Rewrites the engine's idioms that SQLite does not share, and nothing else:
// DELETE * FROM, #date# literals, "double-quoted" strings, True/False and
// '&' joining text (a null joins as empty). Text that is already SQLite's
// comes back unchanged. Text nested deeper than max_bracket_depth is refused
// with 3075 and the engine error set.
bool jet_to_sqlite(const QString& sql, QString& sqlite_text);

// The same, for callers that have no failure path: text that is refused comes
// back as it stands, for SQLite to refuse in its own words.
QString jet_to_sqlite(const QString& sql);

}  // namespace engine
