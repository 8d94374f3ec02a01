#include "script/global_run_sql.h"

#include "database/db_handling.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/workspace.h"
#include "script/obey_command.h"
#include "script/script_lines.h"
#include "script/script_messages.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/file_errors.h"

#include <QFile>
#include <QTextStream>

namespace {

enum class LineOutcome { Next, Stopped, Abandoned };

// One run of one file: its switches, its counters and the statement being collected.
class ScriptRun {
public:
    ScriptRun(QFile& file, QString& status) : file_(file), status_(status) {}

    bool run()
    {
        if (!Program_Workspace().BeginTrans())
            return reader_failure();
        status_.clear();
        QTextStream lines(&file_);
        while (!lines.atEnd()) {
            ++line_number_;
            const QString line = lines.readLine().trimmed();
            if (file_.error() != QFileDevice::NoError) {
                engine::Err() = read_failure(file_);
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
        return false;
    }

    QFile& file_;
    QString& status_;
    StatementCollector collector_;
    bool continue_on_error_ = false;
    int line_number_ = 0;
    const int depth_at_start_ = Program_Workspace().transaction_depth();
};

}  // namespace

bool Global_Run_SQL(const QString& path, QString& status)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        engine::Err() = open_failure(path, file);
        Report_Error(report::Unexpected, QStringLiteral("Cannot open file ") + path, engine::mb::Critical, script_tag(),
                     QStringLiteral("Global_Run_SQL"));
        return false;
    }
    ScriptRun run(file, status);
    const bool applied = run.run();
    file.close();
    return applied;
}
