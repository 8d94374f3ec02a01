#include "script/obey_command.h"

#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "script/current_database.h"
#include "script/query_call.h"
#include "script/script_messages.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"

namespace {

constexpr QChar line_end = QLatin1Char('\n');

bool is_direct_sql(QChar first)
{
    return first == QLatin1Char('A') || first == QLatin1Char('C') || first == QLatin1Char('D')
           || first == QLatin1Char('I') || first == QLatin1Char('U');
}

bool user_wants_to_revert()
{
    const int answer = engine::MsgBox(
        QStringLiteral("Do you wish to cancel the updates and revert to the pre-run database? "),
        engine::mb::YesNo + engine::mb::Question, App_Title());
    return answer == engine::answer::Yes;
}

// The outcome of a failure that the file may survive: logged, then passed
// over when failures are to be ignored, else the user decides.
bool survive_failure(bool continue_on_error)
{
    engine::Err().Clear();
    if (continue_on_error)
        return true;
    return !user_wants_to_revert();
}

// The first recovery stage: everything but the execution of a stored query.
bool first_stage_failure(const QString& statement, const QString& step, bool continue_on_error)
{
    Report_Error(report::Unexpected, QStringLiteral("Error occurred while executing command while ") + step,
                 engine::mb::Critical, script_tag(), QStringLiteral("Obey_Command - ") + statement);
    return survive_failure(continue_on_error);
}

int failed_execution_number()
{
    const int number = engine::Err().Number;
    if (number == 0 && !engine::DBEngine_Errors().isEmpty())
        return engine::DBEngine_Errors().last().Number;
    return number;
}

// The second recovery stage: the execution of a stored query.
bool execution_failure(const QString& statement, bool continue_on_error)
{
    switch (failed_execution_number()) {
    case engine::jet::ItemNotFound:
        engine::Err().Clear();
        engine::MsgBox(QStringLiteral("The query in the Script file has not been recognised.") + line_end
                           + QStringLiteral("Try doing a Refresh on the database (from the main menu, ")
                           + QStringLiteral("select 'Options', 'Refresh Database'), then try again.") + line_end
                           + QStringLiteral("Otherwise, contact Support"),
                       engine::mb::OkOnly, App_Title());
        return false;
    case engine::jet::DuplicateKey:
        engine::Err().Clear();
        engine::MsgBox(QStringLiteral("The data cannot be inserted because there are already records there.") + line_end
                           + QStringLiteral("Delete the old records first, then try again."),
                       engine::mb::OkOnly, App_Title());
        return false;
    default:
        Report_Error(report::Unexpected, QStringLiteral("Error occurred while executing script file. "),
                     engine::mb::Critical, script_tag(), QStringLiteral("Obey_Command - ") + statement);
        return survive_failure(continue_on_error);
    }
}

bool skip_unknown_command(const QString& statement)
{
    const int answer = engine::MsgBox(QStringLiteral("Unknown Command in file. ") + line_end
                                          + QStringLiteral("Continue reading the file? ") + line_end + line_end + statement,
                                      engine::mb::YesNo + engine::mb::Question, App_Title());
    if (answer == engine::answer::Yes)
        return true;
    Report_Error(report::Trace, QStringLiteral("Error occurred while executing command "), engine::mb::OkOnly,
                 script_tag(), QStringLiteral("Obey_Command - ") + statement);
    return false;
}

bool execute_direct_sql(const QString& statement, bool continue_on_error)
{
    engine::Database* db = current_database_or_error();
    if (!db || !db->Execute(statement, engine::dbopt::FailOnErrorConsistent))
        return first_stage_failure(statement, QStringLiteral("Reading command"), continue_on_error);
    return true;
}

// The declared type of a parameter; raises "item not found" for a name the query doesn't declare.
bool declared_type(const engine::QueryDef& query, const QString& name, engine::FieldType& type)
{
    for (const engine::QueryParameter& parameter : query.Parameters()) {
        if (parameter.Name.compare(name, Qt::CaseInsensitive) == 0) {
            type = parameter.Type;
            return true;
        }
    }
    engine::raise_engine_error(engine::jet::ItemNotFound, QStringLiteral("Item not found in this collection."));
    return false;
}

bool call_stored_query(const QString& statement, bool continue_on_error)
{
    QString call = statement;
    call.replace(QLatin1Char(';'), QLatin1Char(' '));
    const QueryCall parsed = parse_query_call(call);

    QString step = QStringLiteral("setting up querydef");
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(parsed.name) : nullptr;
    if (!query)
        return first_stage_failure(statement, step, continue_on_error);

    for (const QueryCallParameter& parameter : parsed.parameters) {
        step = QStringLiteral("setting up parameter called ") + parameter.name;
        engine::FieldType type = engine::FieldType::Unknown;
        QVariant value;
        if (!declared_type(*query, parameter.name, type) || !parameter_value_from_text(parameter.value, type, value)
            || !query->set_parameter(parameter.name, value))
            return first_stage_failure(statement, step, continue_on_error);
    }

    if (!query->Execute(engine::dbopt::FailOnErrorConsistent))
        return execution_failure(statement, continue_on_error);
    engine::Err().Clear();
    return true;
}

}  // namespace

bool Obey_Command(const QString& statement, bool continue_on_error)
{
    // A statement that followed another on the same line starts with the
    // blank after that one's ";": the command is the first word, not the blank.
    const QString command = statement.trimmed();
    const QChar first = command.isEmpty() ? QChar() : command.front().toUpper();
    if (is_direct_sql(first))
        return execute_direct_sql(command, continue_on_error);
    if (first != QLatin1Char('Q'))
        return skip_unknown_command(command);
    return call_stored_query(command, continue_on_error);
}
