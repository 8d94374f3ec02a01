#include "ui/shell/switch_screen.h"

#include "shell/startup.h"
#include "toolkit/switch_rules.h"

#include <QApplication>
#include <QCloseEvent>
#include <QTimer>
#include <QVariant>

namespace {

const char unloading_property[] = "quillary_unloading";

QPointer<QWidget>& main_menu()
{
    static QPointer<QWidget> menu;
    return menu;
}

QString name_of(const QWidget* screen)
{
    return screen ? screen->objectName() : QString();
}

}  // namespace

QPointer<QWidget>& Glob_Return_Form()
{
    static QPointer<QWidget> form;
    return form;
}

QWidget* Main_Menu()
{
    return main_menu();
}

void set_main_menu(QWidget* menu)
{
    main_menu() = menu;
}

void show_screen(QWidget* screen)
{
    if (!screen)
        return;
    screen->show();
    screen->raise();
    screen->activateWindow();
}

void Switch_Screen(QWidget* me, QWidget* target, bool no_return)
{
    const switching::Decision decision =
        switching::decide(name_of(me), name_of(target), no_return, name_of(Glob_Return_Form()), name_of(Main_Menu()));

    QWidget* to_show = nullptr;
    switch (decision.show) {
    case switching::Show::Main_Menu: to_show = Main_Menu(); break;
    case switching::Show::Target: to_show = target; break;
    case switching::Show::Return_Form: to_show = Glob_Return_Form(); break;
    }
    switch (decision.remember) {
    case switching::Remember::Keep: break;
    case switching::Remember::Nothing: Glob_Return_Form() = nullptr; break;
    case switching::Remember::Target: Glob_Return_Form() = target; break;
    case switching::Remember::Me: Glob_Return_Form() = me; break;
    }
    // The next screen shows before this one goes, so that there is never a
    // moment without a window.
    show_screen(to_show);
    if (!me || me == to_show)
        return;
    if (decision.me == switching::Leave::Hide || me == Main_Menu())
        me->hide();
    else
        Unload(me);
}

void Unload(QWidget* screen)
{
    if (!screen || is_unloading(screen))
        return;
    screen->setProperty(unloading_property, true);
    screen->close();
    screen->deleteLater();
}

bool is_unloading(const QWidget* screen)
{
    return screen && screen->property(unloading_property).toBool();
}

void Main_End_Prog(QWidget* form)
{
    while (QApplication::overrideCursor())
        QApplication::restoreOverrideCursor();
    // The screens still loaded are noted in the goodbye text, which is composed
    // and shown nowhere, and unloaded.
    QString goodbye = Main_End_Message();
    const QWidgetList screens = QApplication::topLevelWidgets();
    for (QWidget* screen : screens) {
        if (screen == form || !screen->objectName().startsWith(QLatin1String("frm_")) || is_unloading(screen))
            continue;
        goodbye += QLatin1Char('\n') + screen->windowTitle() + QStringLiteral(" not unloaded");
        Unload(screen);
    }
    Main_End_Prog_Close();
    Glob_Return_Form() = nullptr;
    if (form == Main_Menu())
        set_main_menu(nullptr);
    Unload(form);
    QCoreApplication::quit();
}

bool Close_Box_Is_Exit(QWidget* screen, QCloseEvent* event, const std::function<void()>& exit)
{
    if (is_unloading(screen))
        return false;
    event->ignore();
    QTimer::singleShot(0, screen, exit);
    return true;
}
