#include "engine/criteria.h"

#include "engine/currency.h"
#include "engine/err.h"
#include "engine/jet_date.h"
#include "engine/sql_compat.h"

#include <optional>
#include <vector>

namespace engine {

// ---------------------------------------------------------------- the parsed form

enum class ValueKind { Null, Boolean, Number, Money, Date, Text };

struct Operand {
    int field = -1;  // the row's value at this index, or the literal below
    FieldType field_type = FieldType::Unknown;
    ValueKind literal_kind = ValueKind::Null;
    QVariant literal;
};

enum class NodeKind { Or, And, Not, Compare, Like, IsNull, Between, In, Truth };
enum class CompareOp { Equal, NotEqual, Less, Greater, LessEqual, GreaterEqual };

struct CriteriaNode {
    NodeKind kind = NodeKind::Truth;
    CompareOp op = CompareOp::Equal;
    bool negated = false;
    std::vector<std::shared_ptr<const CriteriaNode>> children;
    std::vector<Operand> operands;  // the subject first
};

using NodePtr = std::shared_ptr<CriteriaNode>;

// ---------------------------------------------------------------- values

namespace {

struct Value {
    ValueKind kind = ValueKind::Null;
    QVariant data;
};

bool is_null(const QVariant& value)
{
    return !value.isValid() || value.isNull();
}

ValueKind kind_of_field_type(FieldType type)
{
    switch (type) {
    case FieldType::Boolean:
        return ValueKind::Boolean;
    case FieldType::Byte:
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::Single:
    case FieldType::Double:
        return ValueKind::Number;
    case FieldType::Currency:
        return ValueKind::Money;
    case FieldType::Date:
        return ValueKind::Date;
    case FieldType::Text:
    case FieldType::Memo:
        return ValueKind::Text;
    case FieldType::Unknown:
        break;
    }
    return ValueKind::Null;
}

ValueKind kind_of_variant(const QVariant& value)
{
    if (value.metaType() == QMetaType::fromType<Currency>())
        return ValueKind::Money;
    switch (value.typeId()) {
    case QMetaType::Bool:
        return ValueKind::Boolean;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Double:
    case QMetaType::Float:
        return ValueKind::Number;
    case QMetaType::QDateTime:
    case QMetaType::QDate:
    case QMetaType::QTime:
        return ValueKind::Date;
    default:
        return ValueKind::Text;
    }
}

Value value_of(const Operand& operand, const QVector<QVariant>& row)
{
    if (operand.field < 0)
        return {operand.literal_kind, operand.literal};
    const QVariant data = row.value(operand.field);
    if (is_null(data))
        return {};
    const ValueKind declared = kind_of_field_type(operand.field_type);
    return {declared == ValueKind::Null ? kind_of_variant(data) : declared, data};
}

std::optional<QDateTime> date_of(const Value& value)
{
    if (value.kind == ValueKind::Boolean)
        return std::nullopt;
    if (const auto stored = to_storage_date(value.data))
        return storage_to_date(*stored);
    if (value.data.typeId() == QMetaType::QString)
        return parse_jet_date_literal(value.data.toString());
    return std::nullopt;
}

// The engine's True is -1.
std::optional<double> number_of(const Value& value)
{
    if (value.data.typeId() == QMetaType::Bool)
        return value.data.toBool() ? -1.0 : 0.0;
    if (value.data.metaType() == QMetaType::fromType<Currency>())
        return value.data.value<Currency>().to_double();
    if (value.kind == ValueKind::Date) {
        if (const auto date = date_of(value))
            return date_to_serial(*date);
        return std::nullopt;
    }
    bool ok = false;
    const double number = value.data.typeId() == QMetaType::QString ? value.data.toString().trimmed().toDouble(&ok)
                                                                     : value.data.toDouble(&ok);
    if (!ok)
        return std::nullopt;
    return number;
}

std::optional<Currency> money_of(const Value& value)
{
    if (value.data.metaType() == QMetaType::fromType<Currency>())
        return value.data.value<Currency>();
    if (const auto number = number_of(value))
        return Currency::try_from_double(*number);
    return std::nullopt;
}

std::optional<bool> flag_of(const Value& value)
{
    if (value.data.typeId() == QMetaType::QString) {
        const QString text = value.data.toString().trimmed();
        if (text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
            return true;
        if (text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0)
            return false;
    }
    if (const auto number = number_of(value))
        return *number != 0.0;
    return std::nullopt;
}

QString text_of(const Value& value)
{
    if (value.kind == ValueKind::Date) {
        if (const auto stored = to_storage_date(value.data))
            return *stored;
    }
    if (value.data.metaType() == QMetaType::fromType<Currency>())
        return value.data.value<Currency>().to_string();
    return value.data.toString();
}

template <typename T>
int three_way(const T& a, const T& b)
{
    return a < b ? -1 : (b < a ? 1 : 0);
}

template <typename T, typename Convert>
std::optional<int> compare_as(const Value& a, const Value& b, Convert convert)
{
    const std::optional<T> left = convert(a);
    const std::optional<T> right = convert(b);
    if (!left || !right)
        return std::nullopt;
    return three_way(*left, *right);
}

bool either_is(const Value& a, const Value& b, ValueKind kind)
{
    return a.kind == kind || b.kind == kind;
}

// The order of two values, or none when either is Null or they don't convert
// to a common kind. The first kind found on either side decides, in this order.
std::optional<int> compare_values(const Value& a, const Value& b)
{
    if (either_is(a, b, ValueKind::Null))
        return std::nullopt;
    if (either_is(a, b, ValueKind::Date))
        return compare_as<QDateTime>(a, b, date_of);
    if (either_is(a, b, ValueKind::Boolean)) {
        // Yes/no fields hold 0 and 1; True is -1: any non-zero value is True.
        return compare_as<int>(a, b, [](const Value& v) -> std::optional<int> {
            if (const auto flag = flag_of(v))
                return *flag ? -1 : 0;
            return std::nullopt;
        });
    }
    if (either_is(a, b, ValueKind::Money))
        return compare_as<Currency>(a, b, money_of);
    if (either_is(a, b, ValueKind::Number))
        return compare_as<double>(a, b, number_of);
    const int order = QString::compare(text_of(a), text_of(b), Qt::CaseInsensitive);
    return three_way(order, 0);
}

// ---------------------------------------------------------------- truth

// Anything with Null in it is Unknown, which never matches, not even negated.
enum class Truth { False, True, Unknown };

Truth truth(bool value)
{
    return value ? Truth::True : Truth::False;
}

Truth logical_not(Truth value)
{
    if (value == Truth::Unknown)
        return Truth::Unknown;
    return value == Truth::True ? Truth::False : Truth::True;
}

Truth logical_and(Truth a, Truth b)
{
    if (a == Truth::False || b == Truth::False)
        return Truth::False;
    return a == Truth::True && b == Truth::True ? Truth::True : Truth::Unknown;
}

Truth logical_or(Truth a, Truth b)
{
    if (a == Truth::True || b == Truth::True)
        return Truth::True;
    return a == Truth::False && b == Truth::False ? Truth::False : Truth::Unknown;
}

Truth apply_negation(Truth value, bool negated)
{
    return negated ? logical_not(value) : value;
}

bool holds(CompareOp op, int order)
{
    switch (op) {
    case CompareOp::Equal:
        return order == 0;
    case CompareOp::NotEqual:
        return order != 0;
    case CompareOp::Less:
        return order < 0;
    case CompareOp::Greater:
        return order > 0;
    case CompareOp::LessEqual:
        return order <= 0;
    case CompareOp::GreaterEqual:
        return order >= 0;
    }
    return false;
}

Truth compare_truth(const Value& a, CompareOp op, const Value& b)
{
    const auto order = compare_values(a, b);
    return order ? truth(holds(op, *order)) : Truth::Unknown;
}

class Evaluator {
public:
    explicit Evaluator(const QVector<QVariant>& row) : row_(row) {}

    Truth eval(const CriteriaNode& node) const
    {
        switch (node.kind) {
        case NodeKind::Or:
            return fold(node, Truth::False, logical_or);
        case NodeKind::And:
            return fold(node, Truth::True, logical_and);
        case NodeKind::Not:
            return logical_not(eval(*node.children.front()));
        case NodeKind::Compare:
            return compare_truth(operand(node, 0), node.op, operand(node, 1));
        case NodeKind::Like:
            return apply_negation(like(node), node.negated);
        case NodeKind::IsNull:
            return truth((operand(node, 0).kind == ValueKind::Null) != node.negated);
        case NodeKind::Between:
            return apply_negation(between(node), node.negated);
        case NodeKind::In:
            return apply_negation(in_list(node), node.negated);
        case NodeKind::Truth:
            return value_truth(operand(node, 0));
        }
        return Truth::Unknown;
    }

private:
    Value operand(const CriteriaNode& node, size_t i) const { return value_of(node.operands[i], row_); }

    Truth fold(const CriteriaNode& node, Truth start, Truth (*combine)(Truth, Truth)) const
    {
        Truth result = start;
        for (const auto& child : node.children)
            result = combine(result, eval(*child));
        return result;
    }

    Truth like(const CriteriaNode& node) const
    {
        const Value subject = operand(node, 0);
        const Value pattern = operand(node, 1);
        if (subject.kind == ValueKind::Null || pattern.kind == ValueKind::Null)
            return Truth::Unknown;
        return truth(jet_like(text_of(subject), text_of(pattern)));
    }

    Truth between(const CriteriaNode& node) const
    {
        const Value subject = operand(node, 0);
        return logical_and(compare_truth(subject, CompareOp::GreaterEqual, operand(node, 1)),
                           compare_truth(subject, CompareOp::LessEqual, operand(node, 2)));
    }

    Truth in_list(const CriteriaNode& node) const
    {
        const Value subject = operand(node, 0);
        Truth result = Truth::False;
        for (size_t i = 1; i < node.operands.size(); ++i)
            result = logical_or(result, compare_truth(subject, CompareOp::Equal, operand(node, i)));
        return result;
    }

    static Truth value_truth(const Value& value)
    {
        if (value.kind == ValueKind::Null)
            return Truth::Unknown;
        const auto flag = flag_of(value);
        return flag ? truth(*flag) : Truth::Unknown;
    }

    const QVector<QVariant>& row_;
};

// ---------------------------------------------------------------- LIKE

struct PatternItem {
    enum Kind { AnyRun, AnyChar, Digit, Literal, Set } kind = Literal;
    QChar literal;
    QList<std::pair<QChar, QChar>> ranges;  // case-folded
    bool negated = false;
};

QChar folded(QChar c)
{
    return c.toCaseFolded();
}

// Reads "[...]" at `pos`; false when no ']' closes it.
bool read_pattern_set(const QString& pattern, qsizetype& pos, PatternItem& item)
{
    const qsizetype close = pattern.indexOf(QLatin1Char(']'), pos + 1);
    if (close < 0)
        return false;
    QString body = pattern.mid(pos + 1, close - pos - 1);
    item.kind = PatternItem::Set;
    item.negated = body.startsWith(QLatin1Char('!'));
    if (item.negated)
        body.remove(0, 1);
    for (qsizetype i = 0; i < body.size(); ++i) {
        const bool is_range = i + 2 < body.size() && body[i + 1] == QLatin1Char('-');
        const QChar low = folded(body[i]);
        const QChar high = is_range ? folded(body[i + 2]) : low;
        item.ranges.append({low, high});
        if (is_range)
            i += 2;
    }
    pos = close + 1;
    return true;
}

QList<PatternItem> compile_pattern(const QString& pattern)
{
    QList<PatternItem> items;
    qsizetype pos = 0;
    while (pos < pattern.size()) {
        const QChar c = pattern[pos];
        PatternItem item;
        if (c == QLatin1Char('[') && read_pattern_set(pattern, pos, item)) {
            items.append(item);
            continue;
        }
        if (c == QLatin1Char('*'))
            item.kind = PatternItem::AnyRun;
        else if (c == QLatin1Char('?'))
            item.kind = PatternItem::AnyChar;
        else if (c == QLatin1Char('#'))
            item.kind = PatternItem::Digit;
        else
            item.literal = folded(c);
        items.append(item);
        ++pos;
    }
    return items;
}

bool item_matches(const PatternItem& item, QChar c)
{
    const QChar f = folded(c);
    switch (item.kind) {
    case PatternItem::AnyChar:
        return true;
    case PatternItem::Digit:
        return c.isDigit();
    case PatternItem::Literal:
        return f == item.literal;
    case PatternItem::Set: {
        bool inside = false;
        for (const auto& [low, high] : item.ranges)
            inside = inside || (low <= f && f <= high);
        return inside != item.negated;
    }
    case PatternItem::AnyRun:
        break;
    }
    return false;
}

}  // namespace

bool jet_like(const QString& text, const QString& pattern)
{
    // reached[j]: the items so far can consume exactly the first j characters.
    std::vector<char> reached(text.size() + 1, 0);
    reached[0] = 1;
    for (const PatternItem& item : compile_pattern(pattern)) {
        std::vector<char> next(text.size() + 1, 0);
        for (qsizetype j = 0; j <= text.size(); ++j) {
            if (!reached[j])
                continue;
            if (item.kind == PatternItem::AnyRun) {
                std::fill(next.begin() + j, next.end(), 1);
                break;
            }
            if (j < text.size() && item_matches(item, text[j]))
                next[j + 1] = 1;
        }
        reached.swap(next);
    }
    return reached[text.size()] != 0;
}

// ---------------------------------------------------------------- parsing

namespace {

constexpr int criteria_syntax_error = 3077;

bool is_reserved_word(const JetToken& token)
{
    for (const char* word : {"and", "or", "not", "like", "is", "null", "between", "in", "true", "false"}) {
        if (token.is_word(QLatin1StringView(word)))
            return true;
    }
    return false;
}

std::optional<CompareOp> compare_op_of(const JetToken& token)
{
    if (token.kind != JetTokenKind::Symbol)
        return std::nullopt;
    static const QList<std::pair<QString, CompareOp>> ops = {
        {QStringLiteral("="), CompareOp::Equal},       {QStringLiteral("<>"), CompareOp::NotEqual},
        {QStringLiteral("<"), CompareOp::Less},        {QStringLiteral(">"), CompareOp::Greater},
        {QStringLiteral("<="), CompareOp::LessEqual},  {QStringLiteral(">="), CompareOp::GreaterEqual},
    };
    for (const auto& [text, op] : ops) {
        if (token.text == text)
            return op;
    }
    return std::nullopt;
}

bool is_numeric_field(FieldType type)
{
    const ValueKind kind = kind_of_field_type(type);
    return kind == ValueKind::Number || kind == ValueKind::Money;
}

// A text literal that a numeric or date field can never be compared with.
bool mismatches(const Operand& field, const Operand& literal)
{
    if (field.field < 0 || literal.field >= 0 || literal.literal_kind != ValueKind::Text)
        return false;
    const Value value{ValueKind::Text, literal.literal};
    if (is_numeric_field(field.field_type))
        return !number_of(value);
    if (field.field_type == FieldType::Date)
        return !date_of(value);
    return false;
}

class CriteriaParser {
public:
    CriteriaParser(const QString& text, const QList<CriteriaField>& fields) : fields_(fields)
    {
        for (const JetToken& token : tokenize_jet_sql(text)) {
            if (token.kind == JetTokenKind::Comment)
                syntax_ok_ = false;
            else if (token.kind != JetTokenKind::Space)
                tokens_.append(token);
        }
    }

    // Raises the engine error and gives null on failure.
    NodePtr run()
    {
        NodePtr root = syntax_ok_ && !tokens_.isEmpty() ? parse_or() : nullptr;
        if (too_deep_) {
            raise_engine_error(criteria_syntax_error,
                               QStringLiteral("The expression is too deeply nested: more than %1 levels of brackets or NOT.")
                                   .arg(max_bracket_depth));
            return nullptr;
        }
        if (!root || pos_ != tokens_.size() || !syntax_ok_) {
            raise_engine_error(criteria_syntax_error, QStringLiteral("Syntax error in expression."));
            return nullptr;
        }
        if (!unknown_name_.isEmpty()) {
            raise_engine_error(jet::InvalidFieldName,
                               QStringLiteral("The Microsoft Jet database engine does not recognize '%1' as a "
                                              "valid field name or expression.")
                                   .arg(unknown_name_));
            return nullptr;
        }
        if (type_mismatch_) {
            raise_engine_error(jet::DataTypeMismatch, QStringLiteral("Data type mismatch in criteria expression."));
            return nullptr;
        }
        return root;
    }

private:
    // ---- token access

    const JetToken* peek() const { return pos_ < tokens_.size() ? &tokens_[pos_] : nullptr; }

    bool accept_word(const char* word)
    {
        if (!peek() || !peek()->is_word(QLatin1StringView(word)))
            return false;
        ++pos_;
        return true;
    }

    bool accept_symbol(const char* symbol)
    {
        if (!peek() || !peek()->is_symbol(QLatin1StringView(symbol)))
            return false;
        ++pos_;
        return true;
    }

    NodePtr fail()
    {
        syntax_ok_ = false;
        return nullptr;
    }

    // ---- expressions: OR < AND < NOT < predicates

    NodePtr parse_or() { return parse_chain(NodeKind::Or, "or", &CriteriaParser::parse_and); }
    NodePtr parse_and() { return parse_chain(NodeKind::And, "and", &CriteriaParser::parse_not); }

    NodePtr parse_chain(NodeKind kind, const char* word, NodePtr (CriteriaParser::*parse_part)())
    {
        NodePtr first = (this->*parse_part)();
        if (!first || !peek() || !peek()->is_word(QLatin1StringView(word)))
            return first;
        auto chain = std::make_shared<CriteriaNode>();
        chain->kind = kind;
        chain->children.push_back(first);
        while (accept_word(word)) {
            NodePtr next = (this->*parse_part)();
            if (!next)
                return fail();
            chain->children.push_back(next);
        }
        return chain;
    }

    // Brackets and NOTs each read one level further down.
    class Deeper {
    public:
        explicit Deeper(CriteriaParser& parser) : parser_(parser)
        {
            if (++parser_.depth_ > max_bracket_depth)
                parser_.too_deep_ = true;
        }
        ~Deeper() { --parser_.depth_; }
        bool too_deep() const { return parser_.too_deep_; }

    private:
        CriteriaParser& parser_;
    };

    NodePtr parse_not()
    {
        if (!accept_word("not"))
            return parse_predicate();
        const Deeper level(*this);
        NodePtr inner = level.too_deep() ? nullptr : parse_not();
        if (!inner)
            return fail();
        auto node = std::make_shared<CriteriaNode>();
        node->kind = NodeKind::Not;
        node->children.push_back(inner);
        return node;
    }

    NodePtr parse_predicate()
    {
        if (accept_symbol("(")) {
            const Deeper level(*this);
            NodePtr inner = level.too_deep() ? nullptr : parse_or();
            if (!inner || !accept_symbol(")"))
                return fail();
            // "(Term_id) = 5": a bracketed operand, not a bracketed condition.
            if (inner->kind == NodeKind::Truth && starts_a_test())
                return parse_test(inner->operands.front());
            return inner;
        }
        const auto subject = parse_operand();
        if (!subject)
            return fail();
        return parse_test(*subject);
    }

    bool starts_a_test() const
    {
        const JetToken* token = peek();
        if (!token)
            return false;
        if (compare_op_of(*token))
            return true;
        for (const char* word : {"like", "between", "in", "is", "not"}) {
            if (token->is_word(QLatin1StringView(word)))
                return true;
        }
        return false;
    }

    // What follows the subject: a comparison, [NOT] LIKE/BETWEEN/IN, IS [NOT]
    // NULL, or nothing (the subject's own truth).
    NodePtr parse_test(const Operand& subject)
    {
        auto node = std::make_shared<CriteriaNode>();
        node->operands.push_back(subject);
        if (const JetToken* token = peek(); token && compare_op_of(*token)) {
            ++pos_;
            node->kind = NodeKind::Compare;
            node->op = *compare_op_of(*token);
            return add_operands(node, 1);
        }
        node->negated = accept_word("not");
        if (accept_word("like")) {
            node->kind = NodeKind::Like;
            return add_operands(node, 1);
        }
        if (accept_word("between")) {
            node->kind = NodeKind::Between;
            if (!add_operands(node, 1) || !accept_word("and"))
                return fail();
            return add_operands(node, 1);
        }
        if (accept_word("in"))
            return parse_in_list(node);
        if (node->negated)
            return fail();
        if (accept_word("is")) {
            node->kind = NodeKind::IsNull;
            node->negated = accept_word("not");
            return accept_word("null") ? node : fail();
        }
        node->kind = NodeKind::Truth;
        return node;
    }

    NodePtr parse_in_list(const NodePtr& node)
    {
        node->kind = NodeKind::In;
        if (!accept_symbol("(") || !add_operands(node, 1))
            return fail();
        while (accept_symbol(",")) {
            if (!add_operands(node, 1))
                return fail();
        }
        return accept_symbol(")") ? node : fail();
    }

    NodePtr add_operands(const NodePtr& node, int count)
    {
        for (int i = 0; i < count; ++i) {
            const auto operand = parse_operand();
            if (!operand)
                return fail();
            if (mismatches(node->operands.front(), *operand) || mismatches(*operand, node->operands.front()))
                type_mismatch_ = true;
            node->operands.push_back(*operand);
        }
        return node;
    }

    // ---- operands

    std::optional<Operand> parse_operand()
    {
        const JetToken* token = peek();
        if (!token)
            return std::nullopt;
        if (token->kind == JetTokenKind::Word || token->kind == JetTokenKind::Bracketed
            || token->kind == JetTokenKind::BackQuoted) {
            if (token->kind == JetTokenKind::Word && is_reserved_word(*token))
                return parse_constant();
            return parse_field();
        }
        return parse_literal();
    }

    std::optional<Operand> parse_constant()
    {
        if (accept_word("true"))
            return literal(ValueKind::Boolean, true);
        if (accept_word("false"))
            return literal(ValueKind::Boolean, false);
        if (accept_word("null"))
            return literal(ValueKind::Null, QVariant());
        return std::nullopt;
    }

    std::optional<Operand> parse_literal()
    {
        const JetToken token = *peek();
        ++pos_;
        switch (token.kind) {
        case JetTokenKind::SingleQuoted:
        case JetTokenKind::DoubleQuoted:
            return literal(ValueKind::Text, quoted_text_value(token));
        case JetTokenKind::DateLiteral:
            return literal(ValueKind::Date, *parse_jet_date_literal(token.text.mid(1, token.text.size() - 2)));
        case JetTokenKind::Number:
            return number_literal(token.text, false);
        case JetTokenKind::Symbol:
            if ((token.text == QLatin1String("-") || token.text == QLatin1String("+")) && peek()
                && peek()->kind == JetTokenKind::Number) {
                ++pos_;
                return number_literal(tokens_[pos_ - 1].text, token.text == QLatin1String("-"));
            }
            break;
        default:
            break;
        }
        return std::nullopt;
    }

    static std::optional<Operand> number_literal(const QString& text, bool negative)
    {
        bool ok = false;
        const qlonglong whole = text.toLongLong(&ok);
        if (ok)
            return literal(ValueKind::Number, negative ? -whole : whole);
        const double number = text.toDouble(&ok);
        if (!ok)
            return std::nullopt;
        return literal(ValueKind::Number, negative ? -number : number);
    }

    static Operand literal(ValueKind kind, const QVariant& value)
    {
        Operand operand;
        operand.literal_kind = kind;
        operand.literal = value;
        return operand;
    }

    static bool is_name_token(const JetToken* token)
    {
        return token
               && ((token->kind == JetTokenKind::Word && !is_reserved_word(*token))
                   || token->kind == JetTokenKind::Bracketed || token->kind == JetTokenKind::BackQuoted);
    }

    static QString name_part(const JetToken& token)
    {
        return token.kind == JetTokenKind::Word ? token.text : quoted_name_value(token);
    }

    // name, [name], T.name, [T].[name]
    std::optional<Operand> parse_field()
    {
        QStringList parts{name_part(tokens_[pos_])};
        QString written = tokens_[pos_].text;
        ++pos_;
        while (pos_ + 1 < tokens_.size() && tokens_[pos_].is_symbol(QLatin1String("."))
               && is_name_token(&tokens_[pos_ + 1])) {
            written += QLatin1Char('.') + tokens_[pos_ + 1].text;
            parts.append(name_part(tokens_[pos_ + 1]));
            pos_ += 2;
        }
        Operand operand;
        operand.field = find_field(parts.join(QLatin1Char('.')));
        if (operand.field < 0 && parts.size() > 1)
            operand.field = find_field(parts.last());
        if (operand.field < 0) {
            if (unknown_name_.isEmpty())
                unknown_name_ = written;
            return operand;  // a Null literal, so that parsing goes on to find syntax errors
        }
        operand.field_type = fields_[operand.field].type;
        return operand;
    }

    int find_field(const QString& name) const
    {
        for (qsizetype i = 0; i < fields_.size(); ++i) {
            if (fields_[i].name.compare(name, Qt::CaseInsensitive) == 0)
                return static_cast<int>(i);
        }
        return -1;
    }

    const QList<CriteriaField>& fields_;
    QList<JetToken> tokens_;
    qsizetype pos_ = 0;
    bool syntax_ok_ = true;
    int depth_ = 0;
    bool too_deep_ = false;
    bool type_mismatch_ = false;
    QString unknown_name_;
};

}  // namespace

// ---------------------------------------------------------------- Criteria

bool Criteria::parse(const QString& text, const QList<CriteriaField>& fields)
{
    text_ = text;
    root_ = CriteriaParser(text, fields).run();
    return root_ != nullptr;
}

bool Criteria::matches(const QVector<QVariant>& values) const
{
    return root_ && Evaluator(values).eval(*root_) == Truth::True;
}

}  // namespace engine
