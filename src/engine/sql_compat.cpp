#include "engine/sql_compat.h"

#include "engine/err.h"
#include "engine/jet_date.h"

#include <QRegularExpression>
#include <QSet>

namespace engine {

// ---------------------------------------------------------------- tokens

namespace {

class Lexer {
public:
    explicit Lexer(const QString& sql) : sql_(sql) {}

    QList<JetToken> run()
    {
        QList<JetToken> tokens;
        while (pos_ < sql_.size()) {
            const qsizetype start = pos_;
            const JetTokenKind kind = read_one();
            tokens.append(JetToken{kind, sql_.mid(start, pos_ - start)});
        }
        return tokens;
    }

private:
    QChar at(qsizetype i) const { return i < sql_.size() ? sql_[i] : QChar(); }
    static bool is_word_start(QChar c) { return c.isLetter() || c == QLatin1Char('_'); }
    static bool is_word_char(QChar c) { return c.isLetterOrNumber() || c == QLatin1Char('_'); }

    JetTokenKind read_one()
    {
        const QChar c = at(pos_);
        if (c.isSpace())
            return read_while([](QChar ch) { return ch.isSpace(); }, JetTokenKind::Space);
        if (c == QLatin1Char('-') && at(pos_ + 1) == QLatin1Char('-'))
            return read_line_comment();
        if (c == QLatin1Char('/') && at(pos_ + 1) == QLatin1Char('*'))
            return read_block_comment();
        if (c == QLatin1Char('\''))
            return read_quoted(QLatin1Char('\''), JetTokenKind::SingleQuoted);
        if (c == QLatin1Char('"'))
            return read_quoted(QLatin1Char('"'), JetTokenKind::DoubleQuoted);
        if (c == QLatin1Char('`'))
            return read_quoted(QLatin1Char('`'), JetTokenKind::BackQuoted);
        if (c == QLatin1Char('['))
            return read_bracketed();
        if (c == QLatin1Char('#') && read_date_literal())
            return JetTokenKind::DateLiteral;
        if (c.isDigit() || (c == QLatin1Char('.') && at(pos_ + 1).isDigit() && !follows_a_name()))
            return read_number();
        if (is_word_start(c))
            return read_while(is_word_char, JetTokenKind::Word);
        return read_symbol();
    }

    template <typename Pred>
    JetTokenKind read_while(Pred pred, JetTokenKind kind)
    {
        while (pos_ < sql_.size() && pred(sql_[pos_]))
            ++pos_;
        return kind;
    }

    JetTokenKind read_line_comment()
    {
        const qsizetype end = sql_.indexOf(QLatin1Char('\n'), pos_);
        pos_ = end < 0 ? sql_.size() : end;
        return JetTokenKind::Comment;
    }

    JetTokenKind read_block_comment()
    {
        const qsizetype end = sql_.indexOf(QLatin1String("*/"), pos_ + 2);
        pos_ = end < 0 ? sql_.size() : end + 2;
        return JetTokenKind::Comment;
    }

    // A quote inside is written twice.
    JetTokenKind read_quoted(QChar quote, JetTokenKind kind)
    {
        ++pos_;
        while (pos_ < sql_.size()) {
            if (sql_[pos_] == quote) {
                if (at(pos_ + 1) != quote) {
                    ++pos_;
                    return kind;
                }
                ++pos_;
            }
            ++pos_;
        }
        return kind;
    }

    JetTokenKind read_bracketed()
    {
        const qsizetype end = sql_.indexOf(QLatin1Char(']'), pos_ + 1);
        pos_ = end < 0 ? sql_.size() : end + 1;
        return JetTokenKind::Bracketed;
    }

    // A '#' that does not open a valid date on the same line is a symbol.
    bool read_date_literal()
    {
        const qsizetype close = sql_.indexOf(QLatin1Char('#'), pos_ + 1);
        if (close < 0)
            return false;
        const QString body = sql_.mid(pos_ + 1, close - pos_ - 1);
        if (body.contains(QLatin1Char('\n')) || !parse_jet_date_literal(body))
            return false;
        pos_ = close + 1;
        return true;
    }

    // "T.5" is not a number after a name; ".5" elsewhere is.
    bool follows_a_name() const
    {
        return pos_ > 0 && (is_word_char(sql_[pos_ - 1]) || sql_[pos_ - 1] == QLatin1Char(']'));
    }

    JetTokenKind read_number()
    {
        read_while([](QChar ch) { return ch.isDigit() || ch == QLatin1Char('.'); }, JetTokenKind::Number);
        const QChar e = at(pos_);
        if ((e == QLatin1Char('e') || e == QLatin1Char('E'))) {
            qsizetype next = pos_ + 1;
            if (at(next) == QLatin1Char('+') || at(next) == QLatin1Char('-'))
                ++next;
            if (at(next).isDigit())
                pos_ = next;
        }
        // Letters stuck to digits ("0x1F", "2nd") stay in the same token.
        return read_while(is_word_char, JetTokenKind::Number);
    }

    JetTokenKind read_symbol()
    {
        static const QStringList pairs = {QStringLiteral("<>"), QStringLiteral("<="), QStringLiteral(">="),
                                          QStringLiteral("!="), QStringLiteral("=="), QStringLiteral("||")};
        const QString two = sql_.mid(pos_, 2);
        pos_ += pairs.contains(two) ? 2 : 1;
        return JetTokenKind::Symbol;
    }

    const QString& sql_;
    qsizetype pos_ = 0;
};

}  // namespace

QList<JetToken> tokenize_jet_sql(const QString& sql)
{
    return Lexer(sql).run();
}

QString quoted_text_value(const JetToken& token)
{
    if (token.text.isEmpty())
        return {};
    const QChar quote = token.text.front();
    QString inner = token.text.mid(1);
    if (inner.endsWith(quote))
        inner.chop(1);
    return inner.replace(QString(2, quote), QString(quote));
}

QString quoted_name_value(const JetToken& token)
{
    if (token.kind == JetTokenKind::BackQuoted)
        return quoted_text_value(token);
    QString inner = token.text.mid(1);
    if (inner.endsWith(QLatin1Char(']')))
        inner.chop(1);
    return inner;
}

// ---------------------------------------------------------------- dates

namespace {

int full_year(const QString& digits)
{
    const int year = digits.toInt();
    if (digits.size() <= 2)
        return year < 30 ? 2000 + year : 1900 + year;
    return year;
}

std::optional<QDate> parse_literal_date(const QString& text)
{
    static const QRegularExpression form(QStringLiteral(R"(^(\d{1,4})([/-])(\d{1,2})\2(\d{1,4})$)"));
    const auto match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const QString first = match.captured(1);
    QDate date;
    if (first.size() >= 3)
        date = QDate(first.toInt(), match.captured(3).toInt(), match.captured(4).toInt());
    else
        date = QDate(full_year(match.captured(4)), first.toInt(), match.captured(3).toInt());
    if (!date.isValid())
        return std::nullopt;
    return date;
}

std::optional<QTime> parse_literal_time(const QString& text)
{
    static const QRegularExpression form(QStringLiteral(R"(^(\d{1,2})(?::(\d{1,2})(?::(\d{1,2}))?)?\s*([AaPp][Mm])?$)"),
                                         QRegularExpression::CaseInsensitiveOption);
    const auto match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const QString meridiem = match.captured(4).toUpper();
    // A bare hour is only a time with AM or PM after it.
    if (match.captured(2).isEmpty() && meridiem.isEmpty())
        return std::nullopt;
    int hour = match.captured(1).toInt();
    if (!meridiem.isEmpty()) {
        if (hour < 1 || hour > 12)
            return std::nullopt;
        hour = hour % 12 + (meridiem == QLatin1String("PM") ? 12 : 0);
    }
    const QTime time(hour, match.captured(2).toInt(), match.captured(3).toInt());
    if (!time.isValid())
        return std::nullopt;
    return time;
}

}  // namespace

std::optional<QDateTime> parse_jet_date_literal(const QString& body)
{
    const QString text = body.trimmed();
    if (text.isEmpty())
        return std::nullopt;
    const qsizetype gap = text.indexOf(QLatin1Char(' '));
    const QString head = gap < 0 ? text : text.left(gap);
    if (const auto date = parse_literal_date(head)) {
        if (gap < 0)
            return make_datetime(*date);
        const auto time = parse_literal_time(text.mid(gap + 1).trimmed());
        if (!time)
            return std::nullopt;
        return make_datetime(*date, *time);
    }
    if (const auto time = parse_literal_time(text))
        return make_datetime(zero_date(), *time);
    return std::nullopt;
}

// ---------------------------------------------------------------- rewriting

namespace {

bool is_blank(const JetToken& token)
{
    return token.kind == JetTokenKind::Space || token.kind == JetTokenKind::Comment;
}

qsizetype next_significant(const QList<JetToken>& tokens, qsizetype from)
{
    while (from < tokens.size() && is_blank(tokens[from]))
        ++from;
    return from;
}

qsizetype previous_significant(const QList<JetToken>& tokens, qsizetype from)
{
    while (from >= 0 && is_blank(tokens[from]))
        --from;
    return from;
}

bool is_symbol_at(const QList<JetToken>& tokens, qsizetype i, QLatin1StringView symbol)
{
    return i >= 0 && i < tokens.size() && tokens[i].is_symbol(symbol);
}

QString single_quoted(const QString& value)
{
    return QLatin1Char('\'') + QString(value).replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'');
}

// Whether a quoted token ends with its closing quote: after the opening
// one, doubled quotes stand for one and a single one closes.
bool is_closed_quote(const QString& text)
{
    const QChar quote = text.front();
    for (qsizetype i = 1; i < text.size(); ++i) {
        if (text[i] != quote)
            continue;
        if (i + 1 < text.size() && text[i + 1] == quote)
            ++i;
        else
            return i == text.size() - 1;
    }
    return false;
}

// True/False as a word of its own: not a qualified name's part, not a parameter.
bool is_boolean_constant(const QList<JetToken>& tokens, qsizetype i)
{
    if (!tokens[i].is_word(QLatin1String("true")) && !tokens[i].is_word(QLatin1String("false")))
        return false;
    const qsizetype before = previous_significant(tokens, i - 1);
    for (const char* prefix : {".", ":", "@", "$"}) {
        if (is_symbol_at(tokens, before, QLatin1StringView(prefix)))
            return false;
    }
    return !is_symbol_at(tokens, next_significant(tokens, i + 1), QLatin1String("."));
}

void rewrite_literals(QList<JetToken>& tokens)
{
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        JetToken& token = tokens[i];
        if (token.kind == JetTokenKind::DoubleQuoted) {
            QString text = single_quoted(quoted_text_value(token));
            // A string the file never closed stays open, for SQLite to refuse.
            if (!is_closed_quote(token.text))
                text.chop(1);
            token = {JetTokenKind::SingleQuoted, text};
        } else if (token.kind == JetTokenKind::DateLiteral) {
            const auto value = parse_jet_date_literal(token.text.mid(1, token.text.size() - 2));
            token = {JetTokenKind::SingleQuoted, single_quoted(date_to_storage(*value))};
        } else if (is_boolean_constant(tokens, i)) {
            token = {JetTokenKind::Number, token.is_word(QLatin1String("true")) ? QStringLiteral("1") : QStringLiteral("0")};
        }
    }
}

bool is_name(const JetToken& token)
{
    return token.kind == JetTokenKind::Word || token.kind == JetTokenKind::Bracketed
           || token.kind == JetTokenKind::BackQuoted;
}

// The end (exclusive) of "*" or "t.*" after DELETE when FROM follows, else -1.
qsizetype end_of_delete_star(const QList<JetToken>& tokens, qsizetype first)
{
    qsizetype star = first;
    if (first < tokens.size() && is_name(tokens[first]) && is_symbol_at(tokens, first + 1, QLatin1String("."))
        && is_symbol_at(tokens, first + 2, QLatin1String("*")))
        star = first + 2;
    if (!is_symbol_at(tokens, star, QLatin1String("*")))
        return -1;
    const qsizetype from = next_significant(tokens, star + 1);
    if (from >= tokens.size() || !tokens[from].is_word(QLatin1String("from")))
        return -1;
    const bool blank_follows = tokens[star + 1].kind == JetTokenKind::Space;
    return blank_follows ? star + 2 : star + 1;
}

void rewrite_delete_star(QList<JetToken>& tokens)
{
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        if (!tokens[i].is_word(QLatin1String("delete")))
            continue;
        const qsizetype first = next_significant(tokens, i + 1);
        const qsizetype end = end_of_delete_star(tokens, first);
        if (end < 0)
            continue;
        tokens.remove(first, end - first);
        if (!is_blank(tokens[i + 1]))  // "DELETE*FROM"
            tokens.insert(i + 1, JetToken{JetTokenKind::Space, QStringLiteral(" ")});
    }
}

// The name a select-list item gives its column: the name after AS, or the
// column itself for a plain or qualified column; empty for anything else.
QString item_name(const QList<JetToken>& tokens, qsizetype begin, qsizetype end)
{
    QList<qsizetype> significant;
    for (qsizetype i = begin; i < end; ++i)
        if (!is_blank(tokens[i]))
            significant << i;
    const auto name_of = [&tokens](qsizetype i) {
        const JetToken& t = tokens[i];
        if (t.kind == JetTokenKind::Word)
            return t.text;
        return t.kind == JetTokenKind::Bracketed ? quoted_name_value(t) : QString();
    };
    const qsizetype n = significant.size();
    if (n >= 3 && tokens[significant[n - 2]].is_word(QLatin1String("as")))
        return name_of(significant[n - 1]);
    if (n == 1 || (n == 3 && tokens[significant[1]].is_symbol(QLatin1String("."))))
        return name_of(significant[n - 1]);
    return QString();
}

// The names of a select list that starts at `from`, or false when an item
// has none (an expression without AS, or a '*').
bool select_list_names(const QList<JetToken>& tokens, qsizetype from, QStringList& names)
{
    qsizetype i = next_significant(tokens, from);
    while (i < tokens.size() && (tokens[i].is_word(QLatin1String("distinct")) || tokens[i].is_word(QLatin1String("all"))
                                 || tokens[i].is_word(QLatin1String("distinctrow"))))
        i = next_significant(tokens, i + 1);
    int depth = 0;
    qsizetype item = i;
    for (; i <= tokens.size(); ++i) {
        const bool at_end = i == tokens.size() || (depth == 0 && (tokens[i].is_word(QLatin1String("from"))
                                                                  || tokens[i].is_symbol(QLatin1String(";"))));
        if (at_end || (depth == 0 && tokens[i].is_symbol(QLatin1String(",")))) {
            const QString name = item_name(tokens, item, i);
            if (name.isEmpty())
                return false;
            names << name;
            item = i + 1;
            if (at_end)
                return true;
        } else if (tokens[i].is_symbol(QLatin1String("("))) {
            ++depth;
        } else if (tokens[i].is_symbol(QLatin1String(")"))) {
            --depth;
        }
    }
    return true;
}

// Jet fills the columns of "INSERT INTO t SELECT ..." by the names the select
// list gives them, SQLite by position: where every item has a name, those
// names become the insert's column list.
void name_insert_columns(QList<JetToken>& tokens)
{
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        if (!tokens[i].is_word(QLatin1String("insert")))
            continue;
        const qsizetype into = next_significant(tokens, i + 1);
        if (into >= tokens.size() || !tokens[into].is_word(QLatin1String("into")))
            continue;
        const qsizetype table = next_significant(tokens, into + 1);
        if (table >= tokens.size()
            || (tokens[table].kind != JetTokenKind::Word && tokens[table].kind != JetTokenKind::Bracketed))
            continue;
        const qsizetype select = next_significant(tokens, table + 1);
        QStringList names;
        if (select >= tokens.size() || !tokens[select].is_word(QLatin1String("select"))
            || !select_list_names(tokens, select + 1, names))
            continue;
        QStringList columns;
        for (const QString& name : names)
            columns << QLatin1Char('[') + name + QLatin1Char(']');
        tokens.insert(table + 1, JetToken{JetTokenKind::Symbol, QStringLiteral(" (") + columns.join(QStringLiteral(", ")) + QLatin1Char(')')});
    }
}

// '&' binds looser than arithmetic and tighter than comparisons, so each
// operand runs, at its own bracket depth, to the nearest of these.
bool is_boundary_keyword(const QString& word)
{
    static const QSet<QString> keywords = {
        QStringLiteral("SELECT"), QStringLiteral("FROM"), QStringLiteral("WHERE"), QStringLiteral("AND"),
        QStringLiteral("OR"), QStringLiteral("NOT"), QStringLiteral("AS"), QStringLiteral("SET"),
        QStringLiteral("VALUES"), QStringLiteral("THEN"), QStringLiteral("ELSE"), QStringLiteral("WHEN"),
        QStringLiteral("CASE"), QStringLiteral("END"), QStringLiteral("LIKE"), QStringLiteral("IN"),
        QStringLiteral("BETWEEN"), QStringLiteral("IS"), QStringLiteral("ON"), QStringLiteral("ORDER"),
        QStringLiteral("GROUP"), QStringLiteral("BY"), QStringLiteral("HAVING"), QStringLiteral("INTO"),
        QStringLiteral("UNION"), QStringLiteral("JOIN"), QStringLiteral("LEFT"), QStringLiteral("RIGHT"),
        QStringLiteral("INNER"), QStringLiteral("OUTER"), QStringLiteral("FULL"), QStringLiteral("CROSS"),
        QStringLiteral("DISTINCT"), QStringLiteral("DISTINCTROW"), QStringLiteral("ALL"), QStringLiteral("ASC"),
        QStringLiteral("DESC"), QStringLiteral("UPDATE"), QStringLiteral("DELETE"), QStringLiteral("INSERT"),
        QStringLiteral("EXISTS"), QStringLiteral("ESCAPE"), QStringLiteral("LIMIT"), QStringLiteral("OFFSET"),
        QStringLiteral("XOR"), QStringLiteral("EQV"), QStringLiteral("IMP"), QStringLiteral("PARAMETERS"),
        QStringLiteral("WITH"), QStringLiteral("EXCEPT"), QStringLiteral("INTERSECT"),
    };
    return keywords.contains(word.toUpper());
}

bool is_boundary_symbol(const JetToken& token)
{
    static const QSet<QString> symbols = {
        QStringLiteral(","), QStringLiteral(";"), QStringLiteral("="), QStringLiteral("<>"), QStringLiteral("<"),
        QStringLiteral(">"), QStringLiteral("<="), QStringLiteral(">="), QStringLiteral("!="), QStringLiteral("=="),
    };
    return token.kind == JetTokenKind::Symbol && symbols.contains(token.text);
}

enum class PieceRole { Blank, Operand, Join, Boundary };

struct Piece {
    QString text;
    PieceRole role;
};

QString joined(const QList<Piece>& pieces, qsizetype begin, qsizetype end)
{
    QString text;
    for (qsizetype i = begin; i < end; ++i)
        text += pieces[i].text;
    return text;
}

// One run of pieces between boundaries. Blanks (comments too) next to an
// '&' are dropped, so that no line comment can swallow the closing text.
QString rewrite_run(const QList<Piece>& run)
{
    qsizetype first = 0;
    qsizetype last = run.size() - 1;
    while (first <= last && run[first].role == PieceRole::Blank)
        ++first;
    while (last >= first && run[last].role == PieceRole::Blank)
        --last;
    QStringList operands;
    qsizetype start = first;
    for (qsizetype i = first; i <= last + 1; ++i) {
        if (i <= last && run[i].role != PieceRole::Join)
            continue;
        qsizetype b = start;
        qsizetype e = i;
        while (b < e && run[b].role == PieceRole::Blank)
            ++b;
        while (e > b && run[e - 1].role == PieceRole::Blank)
            --e;
        if (b == e)
            return joined(run, 0, run.size());  // "a & & b": leave SQLite to refuse it
        operands.append(QStringLiteral("coalesce(") + joined(run, b, e) + QStringLiteral(",'')"));
        start = i + 1;
    }
    if (operands.size() < 2)
        return joined(run, 0, run.size());
    return joined(run, 0, first) + QLatin1Char('(') + operands.join(QLatin1String(" || ")) + QLatin1Char(')')
           + joined(run, last + 1, run.size());
}

QString rewrite_runs(const QList<Piece>& pieces)
{
    QString text;
    QList<Piece> run;
    for (const Piece& piece : pieces) {
        if (piece.role != PieceRole::Boundary) {
            run.append(piece);
            continue;
        }
        text += rewrite_run(run) + piece.text;
        run.clear();
    }
    return text + rewrite_run(run);
}

// The deepest that brackets stand inside one another; a ')' without its
// '(' counts for nothing.
int bracket_depth(const QList<JetToken>& tokens)
{
    int depth = 0;
    int deepest = 0;
    for (const JetToken& token : tokens) {
        if (token.is_symbol(QLatin1String("(")))
            deepest = std::max(deepest, ++depth);
        else if (token.is_symbol(QLatin1String(")")) && depth > 0)
            --depth;
    }
    return deepest;
}

class ConcatRewriter {
public:
    explicit ConcatRewriter(const QList<JetToken>& tokens) : tokens_(tokens) {}

    QString run() { return sequence(false); }

private:
    // Reads up to the ')' that closes this depth (left for the caller) or the end.
    QString sequence(bool nested)
    {
        QList<Piece> pieces;
        while (pos_ < tokens_.size()) {
            const JetToken& token = tokens_[pos_];
            if (token.is_symbol(QLatin1String("("))) {
                pieces.append({group(), PieceRole::Operand});
                continue;
            }
            if (token.is_symbol(QLatin1String(")")) && nested)
                break;
            pieces.append({token.text, role_of(pos_)});
            ++pos_;
        }
        return rewrite_runs(pieces);
    }

    QString group()
    {
        ++pos_;
        QString text = QLatin1Char('(') + sequence(true);
        if (pos_ < tokens_.size()) {
            text += tokens_[pos_].text;
            ++pos_;
        }
        return text;
    }

    PieceRole role_of(qsizetype i) const
    {
        const JetToken& token = tokens_[i];
        if (is_blank(token))
            return PieceRole::Blank;
        if (token.is_symbol(QLatin1String("&")))
            return PieceRole::Join;
        // An unmatched ')' at the outermost level.
        if (token.is_symbol(QLatin1String(")")) || is_boundary_symbol(token))
            return PieceRole::Boundary;
        if (token.kind == JetTokenKind::Word && is_keyword_here(i))
            return PieceRole::Boundary;
        return PieceRole::Operand;
    }

    // Not a keyword as a qualified name's part, nor LEFT/RIGHT as functions.
    bool is_keyword_here(qsizetype i) const
    {
        const JetToken& token = tokens_[i];
        if (!is_boundary_keyword(token.text))
            return false;
        if (is_symbol_at(tokens_, previous_significant(tokens_, i - 1), QLatin1String(".")))
            return false;
        const bool is_function_name = token.is_word(QLatin1String("left")) || token.is_word(QLatin1String("right"));
        return !(is_function_name && is_symbol_at(tokens_, next_significant(tokens_, i + 1), QLatin1String("(")));
    }

    const QList<JetToken>& tokens_;
    qsizetype pos_ = 0;
};

}  // namespace

bool jet_to_sqlite(const QString& sql, QString& sqlite_text)
{
    QList<JetToken> tokens = tokenize_jet_sql(sql);
    if (bracket_depth(tokens) > max_bracket_depth) {
        raise_engine_error(jet::SyntaxError,
                           QStringLiteral("The statement is too deeply nested: more than %1 brackets stand inside one another.")
                               .arg(max_bracket_depth));
        return false;
    }
    rewrite_delete_star(tokens);
    name_insert_columns(tokens);
    rewrite_literals(tokens);
    sqlite_text = ConcatRewriter(tokens).run();
    return true;
}

QString jet_to_sqlite(const QString& sql)
{
    QString sqlite_text;
    if (!jet_to_sqlite(sql, sqlite_text))
        return sql;
    return sqlite_text;
}

}  // namespace engine
