// The engine's SQL dialect: the tokenizer, the values of quoted tokens and
// date literals, and the rewriting that direct SQL goes through.

#include "engine/err.h"
#include "engine/sql_compat.h"
#include "fuzz_check.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using engine::JetTokenKind;
    const QString sql = fuzz_text(data, size);

    const QList<engine::JetToken> tokens = engine::tokenize_jet_sql(sql);
    QString joined;
    for (const engine::JetToken& token : tokens) {
        FUZZ_CHECK(!token.text.isEmpty(), "no token is empty");
        joined += token.text;
        switch (token.kind) {
        case JetTokenKind::SingleQuoted:
        case JetTokenKind::DoubleQuoted:
            FUZZ_CHECK(engine::quoted_text_value(token).size() < token.text.size(), "a string's value drops its quote");
            break;
        case JetTokenKind::Bracketed:
        case JetTokenKind::BackQuoted:
            FUZZ_CHECK(engine::quoted_name_value(token).size() < token.text.size(), "a quoted name drops its quote");
            break;
        case JetTokenKind::DateLiteral:
            FUZZ_CHECK(token.text.size() >= 2 && token.text.startsWith(QLatin1Char('#'))
                           && token.text.endsWith(QLatin1Char('#')),
                       "a date literal stands between two #");
            FUZZ_CHECK(engine::parse_jet_date_literal(token.text.mid(1, token.text.size() - 2)).has_value(),
                       "a date literal token holds a date");
            break;
        default:
            break;
        }
    }
    FUZZ_CHECK(joined == sql, "the token texts joined give back the input");

    (void)engine::parse_jet_date_literal(sql);
    engine::Err().Clear();
    QString sqlite_text;
    if (!engine::jet_to_sqlite(sql, sqlite_text)) {
        FUZZ_CHECK(engine::Err().Number == engine::jet::SyntaxError, "refused text raises a syntax error");
        FUZZ_CHECK(engine::jet_to_sqlite(sql) == sql, "refused text comes back as it stands");
    }
    return 0;
}
