// The script reader's line handling: each line trimmed, classified, and
// statement lines collected until a ";", as the reader does with a file.

#include "fuzz_check.h"
#include "script/script_lines.h"

#include <QStringList>
#include <cstring>

namespace {

void check_text_after(const ScriptLine& line, const QString& trimmed, const char* keyword)
{
    const qsizetype length = qsizetype(std::strlen(keyword));
    FUZZ_CHECK(trimmed.left(length).compare(QLatin1StringView(keyword), Qt::CaseInsensitive) == 0,
               "a keyword line starts with its keyword");
    // The keyword and the one character after it are dropped.
    FUZZ_CHECK(line.text == trimmed.mid(length + 1), "a keyword line's text follows the keyword and one character");
}

// Sizes and ends only: holding a copy of what was pending would make the
// collector copy it on every line, and the run quadratic.
void check_collected(const StatementCollector& collector, qsizetype before, const QString& line,
                     const std::optional<QString>& statement)
{
    const qsizetype semicolon = line.indexOf(QLatin1Char(';'));
    if (semicolon < 0) {
        FUZZ_CHECK(!statement, "a line without ';' completes nothing");
        FUZZ_CHECK(collector.pending().size() == before + line.size() + 1
                       && collector.pending().endsWith(line + QLatin1Char(' ')),
                   "a line without ';' joins with one blank");
        return;
    }
    FUZZ_CHECK(statement.has_value(), "a line with ';' completes a statement");
    FUZZ_CHECK(statement->size() == before + semicolon && statement->endsWith(QStringView(line).left(semicolon)),
               "the statement ends at the first ';'");
    FUZZ_CHECK(collector.pending() == QStringView(line).mid(semicolon + 1), "what follows the ';' starts the next statement");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString script = fuzz_text(data, size);
    StatementCollector collector;
    // The reader reads line by line; a "\r\n" line end loses its "\r" in text mode.
    for (QString line : script.split(QLatin1Char('\n'))) {
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        line = line.trimmed();
        const ScriptLine classified = classify_script_line(line);
        FUZZ_CHECK((classified.kind == ScriptLineKind::Empty) == line.isEmpty(), "only an empty line is empty");
        switch (classified.kind) {
        case ScriptLineKind::Display:
            check_text_after(classified, line, "display");
            break;
        case ScriptLineKind::Question:
            check_text_after(classified, line, "question");
            break;
        case ScriptLineKind::Statement: {
            const qsizetype before = collector.pending().size();
            const std::optional<QString> statement = collector.add(line);
            check_collected(collector, before, line, statement);
            break;
        }
        default:
            FUZZ_CHECK(classified.text.isEmpty(), "only display and question lines carry text");
            break;
        }
    }
    return 0;
}
