// quillary-cli: the program's core routines for scripts and tests, without a display.

#include "cli/cli_boxes.h"
#include "cli/commands.h"

#include <QCoreApplication>
#include <QStringList>
#include <cstdio>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Quillary"));
    QCoreApplication::setOrganizationName(QStringLiteral("Quillary"));
    QStringList args = QCoreApplication::arguments();
    args.removeFirst();
    return cli::run(args);
}
