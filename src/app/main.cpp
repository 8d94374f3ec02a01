// The desktop program: start-up, then the main menu until the user ends it.

#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/single_instance.h"
#include "shell/startup.h"
#include "ui/frm_startup.h"
#include "ui/message_box_dialog.h"

#include <QApplication>
#include <memory>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quillary"));
    QApplication::setOrganizationName(QStringLiteral("Quillary"));
    ui::install_dialog_message_boxes();

    auto startup = std::make_unique<frm_Startup>();
    startup->show();
    QApplication::processEvents();

    SingleInstance instance;
    if (!Main_Start(instance)) {
        Main_End_Prog_Close();
        return 0;
    }
    startup.reset();

    // The main menu is the next screen to be built; until it is, the program
    // says what it has opened and ends cleanly.
    const QString opened = Current_Db_Name().isEmpty() ? QStringLiteral("No database is open.")
                                                       : QStringLiteral("The database ") + Current_Db_Name()
                                                             + QStringLiteral(" is open.");
    engine::MsgBox(opened + QLatin1Char('\n') + QStringLiteral("The main menu is not available yet; the program will now end."),
                   engine::mb::Information, App_Title());
    Main_End_Prog_Close();
    return 0;
}
