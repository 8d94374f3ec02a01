// Reading a formula's text into its tree.

#include "engine/sql_compat.h"
#include "reportengine/formula_node.h"

#include <QHash>

namespace reportengine {

namespace {

enum class TokenKind { End, Number, Text, Field, FormulaRef, Word, Symbol };

struct Token {
    TokenKind kind = TokenKind::End;
    QString text;  // the word or symbol; the value of text; the inside of braces
    double number = 0;
    int position = 0;
};

class Lexer {
public:
    explicit Lexer(const QString& text) : s_(text) {}

    bool run(QList<Token>& tokens, FormulaError& error)
    {
        while (true) {
            skip_blanks_and_comments();
            Token token;
            token.position = static_cast<int>(i_);
            if (i_ >= s_.size()) {
                tokens.append(token);
                return true;
            }
            if (!next(token, error))
                return false;
            tokens.append(token);
        }
    }

private:
    void skip_blanks_and_comments()
    {
        while (i_ < s_.size()) {
            if (s_[i_].isSpace()) {
                ++i_;
            } else if (s_.mid(i_, 2) == QLatin1String("//")) {
                while (i_ < s_.size() && s_[i_] != QLatin1Char('\n'))
                    ++i_;
            } else {
                return;
            }
        }
    }

    bool next(Token& token, FormulaError& error)
    {
        const QChar c = s_[i_];
        if (c.isDigit() || (c == QLatin1Char('.') && i_ + 1 < s_.size() && s_[i_ + 1].isDigit()))
            return number(token, error);
        if (c == QLatin1Char('"') || c == QLatin1Char('\''))
            return quoted(token, error);
        if (c == QLatin1Char('{'))
            return braced(token, error);
        if (c.isLetter() || c == QLatin1Char('_')) {
            const qsizetype start = i_;
            while (i_ < s_.size() && (s_[i_].isLetterOrNumber() || s_[i_] == QLatin1Char('_')))
                ++i_;
            token.kind = TokenKind::Word;
            token.text = s_.mid(start, i_ - start);
            return true;
        }
        for (const char* two : {"<>", "<=", ">="}) {
            if (s_.mid(i_, 2) == QLatin1String(two)) {
                token.kind = TokenKind::Symbol;
                token.text = QLatin1String(two);
                i_ += 2;
                return true;
            }
        }
        if (QStringLiteral("=<>+-*/&()[],").contains(c)) {
            token.kind = TokenKind::Symbol;
            token.text = c;
            ++i_;
            return true;
        }
        error = {static_cast<int>(i_), QStringLiteral("The character '%1' has no meaning here.").arg(c)};
        return false;
    }

    bool number(Token& token, FormulaError& error)
    {
        const qsizetype start = i_;
        while (i_ < s_.size() && (s_[i_].isDigit() || s_[i_] == QLatin1Char('.')))
            ++i_;
        bool ok = false;
        token.kind = TokenKind::Number;
        token.number = s_.mid(start, i_ - start).toDouble(&ok);
        token.text = s_.mid(start, i_ - start);
        if (!ok) {
            error = {static_cast<int>(start), QStringLiteral("'%1' is not a number.").arg(token.text)};
            return false;
        }
        return true;
    }

    bool quoted(Token& token, FormulaError& error)
    {
        const QChar quote = s_[i_];
        const qsizetype start = i_++;
        QString value;
        while (i_ < s_.size()) {
            if (s_[i_] == quote) {
                if (i_ + 1 < s_.size() && s_[i_ + 1] == quote) {
                    value += quote;
                    i_ += 2;
                    continue;
                }
                ++i_;
                token.kind = TokenKind::Text;
                token.text = value;
                return true;
            }
            value += s_[i_++];
        }
        error = {static_cast<int>(start), QStringLiteral("The text that starts here has no closing quote.")};
        return false;
    }

    bool braced(Token& token, FormulaError& error)
    {
        const qsizetype start = i_;
        const qsizetype close = s_.indexOf(QLatin1Char('}'), i_);
        if (close < 0) {
            error = {static_cast<int>(start), QStringLiteral("The field name that starts here has no closing brace.")};
            return false;
        }
        const QString inside = s_.mid(start + 1, close - start - 1).trimmed();
        i_ = close + 1;
        if (inside.startsWith(QLatin1Char('@'))) {
            token.kind = TokenKind::FormulaRef;
            token.text = inside.mid(1).trimmed();
        } else {
            token.kind = TokenKind::Field;
            token.text = inside;
        }
        if (token.text.isEmpty()) {
            error = {static_cast<int>(start), QStringLiteral("The braces name no field.")};
            return false;
        }
        return true;
    }

    const QString& s_;
    qsizetype i_ = 0;
};

using NodePtr = std::unique_ptr<FormulaNode>;

// The functions of the language, by lower-case name, with how many
// arguments each takes.
struct Arity {
    int least;
    int most;
};
const QHash<QString, Arity>& functions()
{
    static const QHash<QString, Arity> all = {
        {QStringLiteral("pagenumber"), {0, 0}}, {QStringLiteral("totalpagecount"), {0, 0}},
        {QStringLiteral("printdate"), {0, 0}},  {QStringLiteral("currentdate"), {0, 0}},
        {QStringLiteral("date"), {3, 3}},       {QStringLiteral("isnull"), {1, 1}},
        {QStringLiteral("totext"), {1, 2}},     {QStringLiteral("year"), {1, 1}},
        {QStringLiteral("month"), {1, 1}},      {QStringLiteral("day"), {1, 1}},
        {QStringLiteral("trim"), {1, 1}},       {QStringLiteral("uppercase"), {1, 1}},
        {QStringLiteral("lowercase"), {1, 1}},  {QStringLiteral("length"), {1, 1}},
        {QStringLiteral("round"), {1, 2}},      {QStringLiteral("sum"), {1, 2}},
        {QStringLiteral("count"), {1, 2}},      {QStringLiteral("average"), {1, 2}},
        {QStringLiteral("maximum"), {1, 2}},    {QStringLiteral("minimum"), {1, 2}},
        {QStringLiteral("runningsum"), {1, 2}}, {QStringLiteral("previous"), {1, 1}},
        {QStringLiteral("next"), {1, 1}},       {QStringLiteral("instr"), {2, 2}},
        {QStringLiteral("time"), {1, 1}},       {QStringLiteral("dateadd"), {3, 3}},
        {QStringLiteral("datediff"), {3, 3}},   {QStringLiteral("replace"), {3, 3}},
    };
    return all;
}

class Parser {
public:
    Parser(const QList<Token>& tokens, FormulaError& error) : t_(tokens), error_(error) {}

    NodePtr run()
    {
        NodePtr root = expression();
        if (root && peek().kind != TokenKind::End)
            return fail(peek().position, QStringLiteral("The formula should end here."));
        return root;
    }

private:
    const Token& peek() const { return t_[std::min(pos_, t_.size() - 1)]; }
    bool is_word(const char* word) const
    {
        return peek().kind == TokenKind::Word && peek().text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
    }
    bool is_symbol(const char* symbol) const { return peek().kind == TokenKind::Symbol && peek().text == QLatin1String(symbol); }
    bool accept_word(const char* word)
    {
        if (!is_word(word))
            return false;
        ++pos_;
        return true;
    }
    bool accept_symbol(const char* symbol)
    {
        if (!is_symbol(symbol))
            return false;
        ++pos_;
        return true;
    }
    NodePtr fail(int position, const QString& message)
    {
        if (!failed_)
            error_ = {position, message};
        failed_ = true;
        return nullptr;
    }
    static NodePtr node(NodeKind kind, int position)
    {
        auto n = std::make_unique<FormulaNode>();
        n->kind = kind;
        n->position = position;
        return n;
    }

    // Brackets, nots, signs and ifs each read one level further down.
    class Deeper {
    public:
        explicit Deeper(Parser& p) : p_(p) { ++p_.depth_; }
        ~Deeper() { --p_.depth_; }
        bool too_deep() const { return p_.depth_ > engine::max_bracket_depth; }

    private:
        Parser& p_;
    };
    NodePtr too_deep()
    {
        return fail(peek().position,
                    QStringLiteral("The formula is too deeply nested: more than %1 levels.").arg(engine::max_bracket_depth));
    }

    NodePtr expression()
    {
        if (!is_word("if"))
            return chain(0);
        const Deeper level(*this);
        if (level.too_deep())
            return too_deep();
        auto n = node(NodeKind::If, peek().position);
        ++pos_;
        NodePtr condition = expression();
        if (!condition)
            return nullptr;
        if (!accept_word("then"))
            return fail(peek().position, QStringLiteral("'then' is missing here."));
        NodePtr then_part = expression();
        if (!then_part)
            return nullptr;
        NodePtr else_part;
        if (accept_word("else")) {
            else_part = expression();
            if (!else_part)
                return nullptr;
        } else {
            else_part = node(NodeKind::Literal, peek().position);
        }
        n->operands.push_back(std::move(condition));
        n->operands.push_back(std::move(then_part));
        n->operands.push_back(std::move(else_part));
        return n;
    }

    // The chained operators, loosest first; level 2 is "not", 3 comparisons.
    struct ChainLevel {
        std::vector<std::pair<const char*, Op>> ops;
        bool words;
    };
    static const std::vector<ChainLevel>& levels()
    {
        static const std::vector<ChainLevel> all = {
            {{{"or", Op::Or}}, true},
            {{{"and", Op::And}}, true},
            {{}, false},  // not
            {{}, false},  // comparisons
            {{{"&", Op::Concat}}, false},
            {{{"+", Op::Add}, {"-", Op::Subtract}}, false},
            {{{"*", Op::Multiply}, {"/", Op::Divide}}, false},
        };
        return all;
    }

    NodePtr next_level(size_t level)
    {
        if (level == 2)
            return negation();
        if (level == 3)
            return comparison();
        if (level >= levels().size())
            return unary();
        return chain(level);
    }

    std::optional<Op> chain_op(size_t level) const
    {
        for (const auto& [text, op] : levels()[level].ops)
            if (levels()[level].words ? is_word(text) : is_symbol(text))
                return op;
        return std::nullopt;
    }

    NodePtr chain(size_t level)
    {
        NodePtr first = next_level(level + 1);
        if (!first)
            return nullptr;
        std::optional<Op> op = chain_op(level);
        if (!op)
            return first;
        auto n = node(NodeKind::Chain, first->position);
        n->operands.push_back(std::move(first));
        while (op) {
            ++pos_;
            NodePtr next = next_level(level + 1);
            if (!next)
                return nullptr;
            n->ops.push_back(*op);
            n->operands.push_back(std::move(next));
            op = chain_op(level);
        }
        return n;
    }

    NodePtr negation()
    {
        if (!is_word("not"))
            return next_level(3);
        const Deeper level(*this);
        if (level.too_deep())
            return too_deep();
        auto n = node(NodeKind::Not, peek().position);
        ++pos_;
        NodePtr inner = negation();
        if (!inner)
            return nullptr;
        n->operands.push_back(std::move(inner));
        return n;
    }

    std::optional<Op> comparison_op() const
    {
        static const std::vector<std::pair<const char*, Op>> ops = {
            {"=", Op::Equal}, {"<>", Op::NotEqual}, {"<", Op::Less}, {">", Op::Greater}, {"<=", Op::LessEqual}, {">=", Op::GreaterEqual}};
        for (const auto& [text, op] : ops)
            if (is_symbol(text))
                return op;
        return std::nullopt;
    }

    NodePtr comparison()
    {
        NodePtr left = next_level(4);
        if (!left)
            return nullptr;
        if (const auto op = comparison_op()) {
            auto n = node(NodeKind::Compare, left->position);
            ++pos_;
            NodePtr right = next_level(4);
            if (!right)
                return nullptr;
            n->ops.push_back(*op);
            n->operands.push_back(std::move(left));
            n->operands.push_back(std::move(right));
            return n;
        }
        if (accept_word("in"))
            return in_list(std::move(left));
        return left;
    }

    NodePtr in_list(NodePtr subject)
    {
        auto n = node(NodeKind::In, subject->position);
        n->operands.push_back(std::move(subject));
        if (!accept_symbol("["))
            return fail(peek().position, QStringLiteral("A list in [ ] should follow 'in'."));
        do {
            NodePtr item = next_level(4);
            if (!item)
                return nullptr;
            n->operands.push_back(std::move(item));
        } while (accept_symbol(","));
        if (!accept_symbol("]"))
            return fail(peek().position, QStringLiteral("']' is missing here."));
        return n;
    }

    NodePtr unary()
    {
        if (!is_symbol("-"))
            return primary();
        const Deeper level(*this);
        if (level.too_deep())
            return too_deep();
        auto n = node(NodeKind::Negate, peek().position);
        ++pos_;
        NodePtr inner = unary();
        if (!inner)
            return nullptr;
        n->operands.push_back(std::move(inner));
        return n;
    }

    NodePtr primary()
    {
        const Token& token = peek();
        switch (token.kind) {
        case TokenKind::End:
            return fail(token.position, QStringLiteral("The formula ends too soon."));
        case TokenKind::Number: {
            auto n = node(NodeKind::Literal, token.position);
            n->value = Value::number(token.number);
            ++pos_;
            return n;
        }
        case TokenKind::Text: {
            auto n = node(NodeKind::Literal, token.position);
            n->value = Value::text(token.text);
            ++pos_;
            return n;
        }
        case TokenKind::Field: {
            auto n = node(NodeKind::Field, token.position);
            const qsizetype dot = token.text.indexOf(QLatin1Char('.'));
            n->field = dot < 0 ? FieldName{QString(), token.text} : FieldName{token.text.left(dot), token.text.mid(dot + 1)};
            ++pos_;
            return n;
        }
        case TokenKind::FormulaRef: {
            auto n = node(NodeKind::FormulaRef, token.position);
            n->name = token.text;
            ++pos_;
            return n;
        }
        case TokenKind::Word:
            return word();
        case TokenKind::Symbol:
            break;
        }
        if (!accept_symbol("("))
            return fail(token.position, QStringLiteral("A value is missing here."));
        const Deeper level(*this);
        if (level.too_deep())
            return too_deep();
        NodePtr inner = expression();
        if (!inner)
            return nullptr;
        if (!accept_symbol(")"))
            return fail(peek().position, QStringLiteral("')' is missing here."));
        return inner;
    }

    NodePtr word()
    {
        const Token& token = peek();
        const QString lower = token.text.toLower();
        if (lower == QLatin1String("true") || lower == QLatin1String("false")) {
            auto n = node(NodeKind::Literal, token.position);
            n->value = Value::boolean(lower == QLatin1String("true"));
            ++pos_;
            return n;
        }
        const auto arity = functions().constFind(lower);
        if (arity == functions().constEnd())
            return fail(token.position, QStringLiteral("'%1' is not a function, field or word of the language.").arg(token.text));
        auto n = node(NodeKind::Call, token.position);
        n->name = lower;
        ++pos_;
        if (!accept_symbol("(")) {
            if (arity->least == 0)
                return n;
            return fail(peek().position, QStringLiteral("'(' should follow %1.").arg(token.text));
        }
        const Deeper level(*this);
        if (level.too_deep())
            return too_deep();
        if (!accept_symbol(")")) {
            do {
                NodePtr argument = expression();
                if (!argument)
                    return nullptr;
                n->operands.push_back(std::move(argument));
            } while (accept_symbol(","));
            if (!accept_symbol(")"))
                return fail(peek().position, QStringLiteral("')' is missing here."));
        }
        const int given = static_cast<int>(n->operands.size());
        if (given < arity->least || given > arity->most)
            return fail(token.position, arity->least == arity->most
                                            ? QStringLiteral("%1 takes %2 argument(s), not %3.").arg(token.text).arg(arity->least).arg(given)
                                            : QStringLiteral("%1 takes %2 to %3 arguments, not %4.")
                                                  .arg(token.text).arg(arity->least).arg(arity->most).arg(given));
        return n;
    }

    const QList<Token>& t_;
    FormulaError& error_;
    qsizetype pos_ = 0;
    int depth_ = 0;
    bool failed_ = false;
};

void collect(const FormulaNode* node, QList<FieldName>* fields, QStringList* formulas)
{
    if (!node)
        return;
    if (node->kind == NodeKind::Field && fields)
        fields->append(node->field);
    if (node->kind == NodeKind::FormulaRef && formulas && !formulas->contains(node->name, Qt::CaseInsensitive))
        formulas->append(node->name);
    for (const auto& operand : node->operands)
        collect(operand.get(), fields, formulas);
}

}  // namespace

QString FieldName::written() const
{
    return QLatin1Char('{') + (table.isEmpty() ? column : table + QLatin1Char('.') + column) + QLatin1Char('}');
}

Formula::Formula() = default;
Formula::~Formula() = default;
Formula::Formula(const Formula&) = default;
Formula& Formula::operator=(const Formula&) = default;

bool Formula::parse(const QString& text, FormulaError& error)
{
    text_ = text;
    root_.reset();
    error = {};
    QList<Token> tokens;
    if (!Lexer(text).run(tokens, error))
        return false;
    if (tokens.size() == 1)
        return true;  // nothing but blanks and comments
    NodePtr root = Parser(tokens, error).run();
    if (!root)
        return false;
    root_ = std::move(root);
    return true;
}

bool Formula::parse(const QString& text, const QString& what, QString& error)
{
    FormulaError parse_error;
    if (parse(text, parse_error))
        return true;
    error = QStringLiteral("The %1 %2 cannot be read at position %3: %4").arg(what, text).arg(parse_error.position).arg(parse_error.message);
    return false;
}

QList<FieldName> Formula::fields() const
{
    QList<FieldName> found;
    collect(root_.get(), &found, nullptr);
    return found;
}

QStringList Formula::formulas() const
{
    QStringList found;
    collect(root_.get(), nullptr, &found);
    return found;
}

}  // namespace reportengine
