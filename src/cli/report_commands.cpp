#include "cli/report_commands.h"

#include "cli/cli_boxes.h"
#include "cli/cli_support.h"
#include "reports/report_runner.h"

#include <QFileInfo>
#include <QHash>

namespace cli {

namespace {

// The output kind an export file's extension stands for.
QString output_type_of(const QString& path)
{
    static const QHash<QString, QString> types = {
        {QStringLiteral("pdf"), pdf_output_type}, {QStringLiteral("docx"), QStringLiteral("1")},
        {QStringLiteral("doc"), QStringLiteral("1")}, {QStringLiteral("xlsx"), QStringLiteral("2")},
        {QStringLiteral("xls"), QStringLiteral("2")}, {QStringLiteral("csv"), QStringLiteral("4")},
        {QStringLiteral("txt"), QStringLiteral("5")}, {QStringLiteral("rtf"), QStringLiteral("6")},
    };
    return types.value(QFileInfo(path).suffix().toLower(), QStringLiteral("8"));
}

void clear_request()
{
    for (QString* global : {&GCR_Report_File(), &GCR_Output_Type(), &GCR_Export_File(), &GCR_Invoice_Type_Value(),
                            &GCR_Formula_Name(), &GCR_Formula_Value(), &GCR_Group_Selection(), &GCR_Record_Selection()})
        global->clear();
}

}  // namespace

QString report_usage()
{
    return QStringLiteral("       quillary-cli report FILE.rpt --database DB --out FILE [--type N] [--record \"...\"] "
                          "[--group \"...\"] [--formula NAME=VALUE] [--invoice-type N]\n"
                          "       (the type follows the output file's extension: pdf, docx, xlsx, csv, txt, rtf, html)\n");
}

int run_report_command(const QString& command, QStringList args)
{
    if (command != QLatin1String("report"))
        return -1;
    const QStringList databases = take_option(args, QStringLiteral("--database"));
    const QStringList outputs = take_option(args, QStringLiteral("--out"));
    const QStringList types = take_option(args, QStringLiteral("--type"));
    const QStringList records = take_option(args, QStringLiteral("--record"));
    const QStringList groups = take_option(args, QStringLiteral("--group"));
    const QStringList formulas = take_option(args, QStringLiteral("--formula"));
    const QStringList invoice_types = take_option(args, QStringLiteral("--invoice-type"));
    if (args.size() != 1 || databases.size() != 1 || outputs.size() != 1 || types.size() > 1 || records.size() > 1
        || groups.size() > 1 || formulas.size() > 1 || invoice_types.size() > 1
        || (formulas.size() == 1 && !formulas[0].contains(QLatin1Char('='))))
        return 2;
    install_box_answers(Answer::Default);
    load_settings();
    if (!open_database(databases[0])) {
        close_all();
        return 1;
    }
    clear_request();
    GCR_Report_File() = QFileInfo(args[0]).absoluteFilePath();
    GCR_Export_File() = outputs[0];
    GCR_Output_Type() = types.isEmpty() ? output_type_of(outputs[0]) : types[0];
    GCR_Record_Selection() = records.value(0);
    GCR_Group_Selection() = groups.value(0);
    GCR_Invoice_Type_Value() = invoice_types.value(0);
    if (!formulas.isEmpty()) {
        GCR_Formula_Name() = formulas[0].section(QLatin1Char('='), 0, 0);
        GCR_Formula_Value() = formulas[0].section(QLatin1Char('='), 1);
    }
    const bool done = GCR_Run_Export();
    if (done)
        out() << "report finished OK - " << GCR_Report_File() << "\n";
    close_all();
    return done ? 0 : 1;
}

}  // namespace cli
