#include "cli/database_commands.h"

#include "cli/cli_boxes.h"
#include "cli/cli_support.h"
#include "cli/csv_output.h"
#include "database/db_handling.h"
#include "database/schema.h"
#include "database/stored_queries.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/recordset.h"

#include <QDate>
#include <QRegularExpression>

namespace cli {

namespace {

bool is_row_query(const QString& sql)
{
    static const QRegularExpression select(QStringLiteral(R"(^\s*(PARAMETERS\b[^;]*;\s*)?(SELECT|WITH)\b)"),
                                           QRegularExpression::CaseInsensitiveOption);
    return select.match(sql).hasMatch();
}

void print_engine_error()
{
    err() << "error " << engine::Err().Number << ": " << engine::Err().Description << "\n";
}

int create(QStringList args)
{
    const bool no_blank_row = take_flag(args, QStringLiteral("--no-blank-row"));
    if (args.size() != 1)
        return 2;
    install_box_answers(Answer::Default);
    load_settings();
    const bool created = DB_Create_Database(args.first(), !no_blank_row);
    close_all();
    return created ? 0 : 1;
}

int refresh_queries(const QStringList& args)
{
    if (args.size() != 1)
        return 2;
    install_box_answers(Answer::No);
    load_settings();
    bool ok = open_database(args.first());
    if (ok) {
        ok = DB_Create_Queries(*Current_Db());
        ok = DB_Create_Invoice_Queries(*Current_Db()) && ok;
    }
    close_all();
    return ok ? 0 : 1;
}

// A value typed on the command line, in the form the parameter's type takes.
QVariant parameter_value(const engine::QueryParameter& parameter, const QString& text)
{
    if (parameter.Type == engine::FieldType::Date) {
        const QDate date = QDate::fromString(text, Qt::ISODate);
        if (date.isValid())
            return date;
    }
    return text;
}

int run_rows_or_action(engine::Recordset* rows, bool is_rows, long long affected)
{
    if (is_rows) {
        print_csv(*rows, out());
    } else {
        out() << "records affected: " << affected << "\n";
    }
    return 0;
}

int query(QStringList args)
{
    // "--null NAME" gives a parameter no value at all, as a screen passes a
    // blank box; "NAME=" gives it the empty text.
    const QStringList null_parameters = take_option(args, QStringLiteral("--null"));
    if (args.size() < 2)
        return 2;
    const QString database = args.takeFirst();
    const QString name = args.takeFirst();
    install_box_answers(Answer::No);
    load_settings();
    if (!open_database(database)) {
        close_all();
        return 1;
    }
    int status = 1;
    auto definition = Current_Db()->QueryDefs(name);
    bool ok = definition != nullptr;
    for (const QString& assignment : args) {
        const qsizetype equals = assignment.indexOf(QLatin1Char('='));
        if (!ok)
            break;
        if (equals <= 0) {
            engine::Err().Raise(engine::vberr::InvalidProcedureCall,
                                QStringLiteral("not PARAM=VALUE or --null PARAM: ") + assignment);
            ok = false;
            break;
        }
        const QString parameter = assignment.left(equals);
        QVariant value = assignment.mid(equals + 1);
        for (const engine::QueryParameter& p : definition->Parameters())
            if (p.Name.compare(parameter, Qt::CaseInsensitive) == 0)
                value = parameter_value(p, value.toString());
        ok = definition->set_parameter(parameter, value);
    }
    for (const QString& parameter : null_parameters) {
        if (!ok)
            break;
        ok = definition->set_parameter(parameter, QVariant());
    }
    if (ok && is_row_query(definition->SQL())) {
        auto rows = definition->OpenRecordset();
        ok = rows != nullptr;
        if (ok)
            status = run_rows_or_action(rows.get(), true, 0);
    } else if (ok) {
        ok = definition->Execute();
        if (ok)
            status = run_rows_or_action(nullptr, false, definition->RecordsAffected());
    }
    if (!ok)
        print_engine_error();
    close_all();
    return status;
}

int sql(const QStringList& args)
{
    if (args.size() != 2)
        return 2;
    install_box_answers(Answer::No);
    load_settings();
    if (!open_database(args.first())) {
        close_all();
        return 1;
    }
    int status = 1;
    const QString statement = args.last();
    if (is_row_query(statement)) {
        auto rows = Current_Db()->OpenRecordset(statement);
        if (rows)
            status = run_rows_or_action(rows.get(), true, 0);
        else
            print_engine_error();
    } else if (Current_Db()->Execute(statement)) {
        status = run_rows_or_action(nullptr, false, Current_Db()->RecordsAffected());
    } else {
        print_engine_error();
    }
    close_all();
    return status;
}

}  // namespace

QString database_usage()
{
    return QStringLiteral("       quillary-cli create DB [--no-blank-row]\n"
                          "       quillary-cli refresh-queries DB\n"
                          "       quillary-cli query DB NAME [PARAM=VALUE ...] [--null PARAM ...]\n"
                          "       quillary-cli sql DB \"STATEMENT\"\n");
}

int run_database_command(const QString& command, QStringList args)
{
    if (command == QLatin1String("create"))
        return create(args);
    if (command == QLatin1String("refresh-queries"))
        return refresh_queries(args);
    if (command == QLatin1String("query"))
        return query(args);
    if (command == QLatin1String("sql"))
        return sql(args);
    return -1;
}

}  // namespace cli
