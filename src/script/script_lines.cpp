#include "script/script_lines.h"

namespace {

bool starts_with_keyword(const QString& lowered, QLatin1StringView keyword)
{
    return lowered.left(keyword.size()) == keyword;
}

// The text of a display or question line: after the keyword and the one
// separating character.
QString text_after(const QString& line, QLatin1StringView keyword)
{
    return line.mid(keyword.size() + 1);
}

}  // namespace

ScriptLine classify_script_line(const QString& trimmed_line)
{
    if (trimmed_line.isEmpty())
        return {ScriptLineKind::Empty, QString()};
    const QString lowered = trimmed_line.left(13).toLower();
    if (starts_with_keyword(lowered, QLatin1StringView("comment")))
        return {ScriptLineKind::Comment, QString()};
    if (starts_with_keyword(lowered, QLatin1StringView("display")))
        return {ScriptLineKind::Display, text_after(trimmed_line, QLatin1StringView("display"))};
    if (starts_with_keyword(lowered, QLatin1StringView("on error cont")))
        return {ScriptLineKind::OnErrorContinue, QString()};
    if (starts_with_keyword(lowered, QLatin1StringView("on error end")))
        return {ScriptLineKind::OnErrorEnd, QString()};
    if (starts_with_keyword(lowered, QLatin1StringView("question")))
        return {ScriptLineKind::Question, text_after(trimmed_line, QLatin1StringView("question"))};
    return {ScriptLineKind::Statement, QString()};
}

std::optional<QString> StatementCollector::add(const QString& trimmed_line)
{
    const qsizetype semicolon = trimmed_line.indexOf(QLatin1Char(';'));
    if (semicolon < 0) {
        pending_ += trimmed_line + QLatin1Char(' ');
        return std::nullopt;
    }
    QString complete = pending_ + trimmed_line.left(semicolon);
    pending_ = trimmed_line.mid(semicolon + 1);
    return complete;
}
