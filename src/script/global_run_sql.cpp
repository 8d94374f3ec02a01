#include "script/global_run_sql.h"

#include "database/db_handling.h"
#include "database/tmp_tables_lock.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/workspace.h"
#include "script/obey_command.h"
#include "script/script_lines.h"
#include "script/script_messages.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/file_errors.h"
#include "shell/text_decoding.h"

#include <QFile>

namespace {

enum class LineOutcome { Next, Stopped, Abandoned };

// One run of one file: its switches, its counters and the statement being collected.
class ScriptRun {
public:
    ScriptRun(const QStringList& lines, QString& status) : lines_(lines), status_(status) {}

    bool run()
    {
        if (!Program_Workspace().BeginTrans())
            return reader_failure();
        status_.clear();
        for (const QString& raw_line : lines_) {
            ++line_number_;
            const QString line = raw_line.trimmed();
            // The engine reads a statement only up to a NUL, so a line holding
            // one could never be run as written.
            if (line.contains(QChar(0))) {
                engine::Err().Raise(engine::vberr::InvalidProcedureCall,
                                    QStringLiteral("The line holds a NUL character (byte 0), which a script may not contain."));
                return reader_failure();
            }
            switch (act_on(line)) {
            case LineOutcome::Next:
                break;
            case LineOutcome::Stopped:
                Program_Workspace().Rollback();
                return false;
            case LineOutcome::Abandoned:
                Program_Workspace().Rollback();
                status_ = script_abandoned_status();
                return false;
            }
        }
        // A statement still being collected has no ";" and is never run.
        if (!Program_Workspace().CommitTrans())
            return reader_failure();
        status_ += script_applied_suffix();
        return true;
    }

private:
    LineOutcome act_on(const QString& line)
    {
        const ScriptLine classified = classify_script_line(line);
        switch (classified.kind) {
        case ScriptLineKind::Empty:
        case ScriptLineKind::Comment:
            return LineOutcome::Next;
        case ScriptLineKind::Display:
            status_ = classified.text;
            return LineOutcome::Next;
        case ScriptLineKind::OnErrorContinue:
            continue_on_error_ = true;
            return LineOutcome::Next;
        case ScriptLineKind::OnErrorEnd:
            continue_on_error_ = false;
            return LineOutcome::Next;
        case ScriptLineKind::Question:
            return user_goes_on(classified.text) ? LineOutcome::Next : LineOutcome::Stopped;
        case ScriptLineKind::Statement:
            break;
        }
        const std::optional<QString> statement = collector_.add(line);
        if (statement && !Obey_Command(*statement, continue_on_error_))
            return LineOutcome::Abandoned;
        return LineOutcome::Next;
    }

    static bool user_goes_on(const QString& question)
    {
        const int answer = engine::MsgBox(question + QLatin1Char('\n') + QStringLiteral("Continue?"),
                                          engine::mb::YesNo + engine::mb::Question, App_Title());
        return answer == engine::answer::Yes;
    }

    // Something went wrong in the reader itself, not in a statement.
    bool reader_failure()
    {
        Report_Error(report::Unexpected, QStringLiteral("Invalid line in file on line ") + QString::number(line_number_),
                     engine::mb::Critical, script_tag(), QStringLiteral("Global_Run_SQL"));
        engine::Err().Clear();
        if (Program_Workspace().transaction_depth() > depth_at_start_)
            Program_Workspace().Rollback();
        engine::Err().Clear();
        // A display line's words ("Term invoices raised") must not stand as
        // the outcome of a run that was undone.
        status_ = script_abandoned_status();
        return false;
    }

    const QStringList& lines_;
    QString& status_;
    StatementCollector collector_;
    bool continue_on_error_ = false;
    int line_number_ = 0;
    const int depth_at_start_ = Program_Workspace().transaction_depth();
};

// The file's lines, line ends of either kind taken off. A last line end
// starts no further line.
QStringList split_lines(const QString& text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    for (QString& line : lines)
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    return lines;
}

bool report_unreadable(const QString& path, const engine::ErrState& cause)
{
    engine::Err() = cause;
    Report_Error(report::Unexpected, QStringLiteral("Cannot open file ") + path, engine::mb::Critical, script_tag(),
                 QStringLiteral("Global_Run_SQL"));
    return false;
}

}  // namespace

bool Global_Run_SQL(const QString& path, QString& status)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return report_unreadable(path, open_failure(path, file));
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return report_unreadable(path, read_failure(file));
    file.close();
    const DecodedText decoded = decode_text_bytes(bytes);
    if (decoded.encoding == TextEncoding::Windows1252)
        Report_Error(report::Trace, QStringLiteral("The script file ") + path
                         + QStringLiteral(" is not in UTF-8; it has been read as Windows-1252."),
                     engine::mb::OkOnly, script_tag());
    // Scripts work on the temporary tables that their caller prepared.
    TmpTablesLock lock;
    if (!Current_Db_Name().isEmpty() && !lock.acquire(Current_Db_Name(), script_tag()))
        return false;
    const QStringList lines = split_lines(decoded.text);
    ScriptRun run(lines, status);
    return run.run();
}
