#include "shell/error_log.h"

#include "engine/err.h"
#include "engine/msg_box.h"
#include "shell/app_globals.h"

#include <QDateTime>
#include <QFile>

namespace {

constexpr int tag_width = 10;

QString ten_character_tag(const QString& module)
{
    return module.left(tag_width).leftJustified(tag_width, QLatin1Char(' '));
}

bool reads_error_state(int number)
{
    return number == report::Unexpected || number == report::BoundControl;
}

// An engine failure that has become the run-time error is already in the
// text; the engine's list is only worth printing when it says something else.
QString engine_errors_part()
{
    const QList<engine::EngineError>& errors = engine::DBEngine_Errors();
    if (errors.isEmpty() || errors.last().Number == engine::Err().Number)
        return QString();
    QString part;
    for (const engine::EngineError& error : errors)
        part += QStringLiteral(" Num:%1 Descr: %2").arg(error.Number).arg(error.Description);
    return part;
}

struct ReportTexts {
    QString log;
    QString shown;
};

ReportTexts compose_texts(int number, const QString& message, const QString& tag)
{
    const QString head = tag + QStringLiteral(" : ");
    if (!reads_error_state(number))
        return {head + message, number == report::Trace ? QString() : message};

    const engine::ErrState& err = engine::Err();
    ReportTexts texts;
    if (err.Number != 0) {
        const QString error = QStringLiteral("%1 : %2").arg(err.Number).arg(err.Description);
        texts.log = head + error + QStringLiteral(" : ") + message;
        texts.shown = message + QLatin1Char('\n') + error;
    } else {
        texts.log = head + message;
        texts.shown = message;
    }
    texts.log += engine_errors_part();
    return texts;
}

QString entry_end(const QString& routine)
{
    if (routine.isEmpty())
        return QStringLiteral(" .");
    return QStringLiteral("\n        ") + routine + QStringLiteral(" .");
}

}  // namespace

void Report_Error(int number, const QString& message, int style, const QString& module, const QString& routine)
{
    ReportTexts texts = compose_texts(number, message, ten_character_tag(module));
    texts.log += entry_end(routine);
    Write_Log(texts.log);
    engine::Err().Clear();
    if (number == report::Trace)
        return;
    engine::MsgBox(texts.shown, style, App_Title());
}

void Write_Log(const QString& text)
{
    const QString& log_file = Current_Log_File();
    if (log_file.trimmed().isEmpty())
        return;
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    QFile file(log_file);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append))
        return;
    file.write((stamp + QStringLiteral(" -- ") + text + QLatin1Char('\n')).toUtf8());
    file.close();
}
