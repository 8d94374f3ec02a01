// quillary-cli: the program's core routines for scripts and tests, without a display.

#include "cli/cli_boxes.h"
#include "cli/commands.h"
#include "reportoutput/output_writers.h"

#include <QGuiApplication>
#include <QStringList>
#include <cstdio>

int main(int argc, char* argv[])
{
    // Reports are drawn with fonts, which need a graphical application; the
    // tool has no display, so it draws off screen.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    reportoutput::install_output_writers();
    QCoreApplication::setApplicationName(QStringLiteral("Quillary"));
    QCoreApplication::setOrganizationName(QStringLiteral("Quillary"));
    QStringList args = QCoreApplication::arguments();
    args.removeFirst();
    return cli::run(args);
}
