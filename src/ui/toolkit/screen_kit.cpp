#include "ui/toolkit/screen_kit.h"

#include "engine/msg_box.h"
#include "shell/error_log.h"
#include "toolkit/help_pages.h"
#include "ui/toolkit/help_window.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenuBar>
#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QApplication>
#include <QPushButton>
#include <QTimer>
#include <QWidget>
#include <QWindow>

namespace {

QColor to_qcolor(const colours::Rgb& rgb)
{
    return QColor(rgb.red, rgb.green, rgb.blue);
}

colours::Rgb from_qcolor(const QColor& colour)
{
    return {colour.red(), colour.green(), colour.blue()};
}

// Turns Enter into a Tab for the field it watches.
class EnterToTabFilter : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress)
            return false;
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)
            return false;
        if ((key->modifiers() & Qt::ControlModifier) && qobject_cast<QPlainTextEdit*>(watched))
            return false;
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QCoreApplication::sendEvent(watched, &tab);
        return true;
    }
};

// The tag of help's reports in the log.
const QString help_tag = QStringLiteral("fHelp");

}  // namespace

void Screen_Setup(QWidget* form, bool /*keep_label_size*/, colours::Rgb& colour)
{
    colour = Gen_Colours();
    set_frame_colour(form, colour);
}

HourGlass::HourGlass()
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

HourGlass::~HourGlass()
{
    QApplication::restoreOverrideCursor();
}

QPushButton* make_button(QWidget* parent, const QString& name, const QString& caption)
{
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    return button;
}

ExitHelpMenu add_exit_help_menu(QWidget* screen, QBoxLayout* layout, const QString& exit_name, const QString& help_name)
{
    ExitHelpMenu menu;
    menu.bar = new QMenuBar(screen);
    menu.exit = menu.bar->addAction(QStringLiteral("E&xit"));
    menu.exit->setObjectName(exit_name);
    menu.help = menu.bar->addAction(QStringLiteral("&Help"));
    menu.help->setObjectName(help_name);
    layout->setMenuBar(menu.bar);
    return menu;
}

QAction* add_menu_before_help(const ExitHelpMenu& menu, const QString& name, const QString& caption)
{
    auto* action = new QAction(caption, menu.bar);
    action->setObjectName(name);
    menu.bar->insertAction(menu.help, action);
    return action;
}

NavigationFrame add_navigation_frame(QWidget* screen, QBoxLayout* layout, const QString& list_name, int characters)
{
    NavigationFrame navigation;
    navigation.frame = new QGroupBox(screen);
    navigation.frame->setObjectName(QStringLiteral("frame_Navigation"));
    navigation.row = new QHBoxLayout(navigation.frame);
    navigation.names = new QComboBox(navigation.frame);
    navigation.names->setObjectName(list_name);
    navigation.names->setMinimumContentsLength(characters);
    navigation.names->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    navigation.names->setMaxVisibleItems(20);
    navigation.row->addWidget(navigation.names, 1);
    navigation.first = make_button(navigation.frame, QStringLiteral("cmd_First"), QStringLiteral("&First"));
    navigation.prev = make_button(navigation.frame, QStringLiteral("cmd_Prev"), QStringLiteral("&Previous"));
    navigation.next = make_button(navigation.frame, QStringLiteral("cmd_Next"), QStringLiteral("&Next"));
    navigation.last = make_button(navigation.frame, QStringLiteral("cmd_Last"), QStringLiteral("&Last"));
    for (QPushButton* button : {navigation.first, navigation.prev, navigation.next, navigation.last})
        navigation.row->addWidget(button);
    layout->addWidget(navigation.frame);
    return navigation;
}

StatusLine add_status_line(QWidget* screen, QBoxLayout* layout)
{
    StatusLine line;
    line.frame = new QGroupBox(QStringLiteral("Status Message"), screen);
    line.frame->setObjectName(QStringLiteral("frame_status"));
    set_frame_colour(line.frame, Glob_Form_Colour());
    auto* row = new QHBoxLayout(line.frame);
    line.text = new QLineEdit(line.frame);
    line.text->setObjectName(QStringLiteral("txt_Status"));
    line.text->setReadOnly(true);
    line.text->setFocusPolicy(Qt::NoFocus);
    line.text->setAccessibleName(line.frame->title());
    row->addWidget(line.text);
    layout->addWidget(line.frame);
    return line;
}

bool Is_Field_Left(const QEvent* event)
{
    if (event->type() != QEvent::FocusOut)
        return false;
    const Qt::FocusReason reason = static_cast<const QFocusEvent*>(event)->reason();
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
}

void set_frame_colour(QWidget* frame, const colours::Rgb& colour)
{
    QPalette palette = frame->palette();
    palette.setColor(QPalette::Window, to_qcolor(colour));
    frame->setPalette(palette);
    frame->setAutoFillBackground(true);
}

colours::Rgb frame_colour(const QWidget* frame)
{
    return from_qcolor(frame->palette().color(QPalette::Window));
}

void set_field_colour(QWidget* field, const colours::Rgb& colour)
{
    QPalette palette = field->palette();
    palette.setColor(QPalette::Base, to_qcolor(colour));
    // A check box shows its colour around the box, as a frame does.
    palette.setColor(QPalette::Window, to_qcolor(colour));
    field->setPalette(palette);
}

colours::Rgb field_colour(const QWidget* field)
{
    return from_qcolor(field->palette().color(QPalette::Base));
}

namespace {

// How long Activate waits for the window system to put a window on the
// display; after that it goes ahead all the same.
constexpr int longest_wait_for_display_ms = 500;

// Watches a screen's window until the window system has put it on the
// display (its first expose), then runs the screen's Activate once.
class ActivateOnDisplay : public QObject {
public:
    ActivateOnDisplay(QWidget* screen, std::function<void()> activate)
        : QObject(screen), screen_(screen), activate_(std::move(activate))
    {
        screen->windowHandle()->installEventFilter(this);
        QTimer::singleShot(longest_wait_for_display_ms, this, [this] { run(); });
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Expose && screen_->windowHandle() == watched && screen_->windowHandle()->isExposed())
            // After the expose has been handled, so that the screen paints first.
            QTimer::singleShot(0, this, [this] { run(); });
        return QObject::eventFilter(watched, event);
    }

private:
    void run()
    {
        if (done_)
            return;
        done_ = true;
        if (QWindow* window = screen_->windowHandle())
            window->removeEventFilter(this);
        if (screen_->isVisible())
            activate_();
        deleteLater();
    }

    QWidget* screen_;
    std::function<void()> activate_;
    bool done_ = false;
};

}  // namespace

void Activate_When_Shown(QWidget* screen, std::function<void()> activate)
{
    // showEvent comes before the window is handed to the window system, so
    // the window can be looked at only once control is back in the event loop.
    QTimer::singleShot(0, screen, [screen, activate = std::move(activate)]() mutable {
        if (!screen->isVisible())
            return;
        const QWindow* window = screen->windowHandle();
        if (!window || window->isExposed()) {
            activate();
            return;
        }
        new ActivateOnDisplay(screen, std::move(activate));
    });
}

void Enter_To_Tab(QWidget* field)
{
    if (auto* text = qobject_cast<QPlainTextEdit*>(field))
        text->setTabChangesFocus(true);
    field->installEventFilter(new EnterToTabFilter(field));
}

short Glob_Search_Combo(const QComboBox* combo, int key)
{
    for (int i = 0; i < combo->count(); ++i)
        if (combo->itemData(i).toInt() == key)
            return static_cast<short>(i);
    return -1;
}

short Glob_Search_List(const QListWidget* list, int key)
{
    for (int i = 0; i < list->count(); ++i)
        if (list->item(i)->data(Qt::UserRole).toInt() == key)
            return static_cast<short>(i);
    return -1;
}

bool Show_Help(QWidget* /*form*/, int command, int context)
{
    const help::Request request = help::resolve(command, context);
    if (command == help::Quit) {
        if (!request.act)
            return false;
        if (HelpWindow* window = existing_help_window())
            window->close();
        help::help_is_open() = false;
        return true;
    }
    if (!request.act) {
        if (request.missing != help::Missing::Nothing)
            Report_Error(report::Detected, help::missing_words(request), engine::mb::Information, help_tag,
                         QStringLiteral("Show_Help"));
        return false;
    }
    Help_Window()->show_page(request.page);
    help::help_is_open() = true;
    return true;
}
