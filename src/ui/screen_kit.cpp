#include "ui/screen_kit.h"

#include "toolkit/help_pages.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QKeyEvent>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QWidget>

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

std::function<bool(const QUrl&)>& help_opener()
{
    static std::function<bool(const QUrl&)> opener;
    return opener;
}

}  // namespace

void Screen_Setup(QWidget* form, bool /*keep_label_size*/, colours::Rgb& colour)
{
    colour = Gen_Colours();
    set_frame_colour(form, colour);
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
    if (!request.act)
        return false;
    if (command == help::Quit) {
        // A page in the user's browser can't be closed from here; help just counts as closed.
        help::help_is_open() = false;
        return true;
    }
    const QUrl url = QUrl::fromLocalFile(request.page);
    const bool opened = help_opener() ? help_opener()(url) : QDesktopServices::openUrl(url);
    if (opened)
        help::help_is_open() = true;
    return opened;
}

void set_help_opener(std::function<bool(const QUrl&)> opener)
{
    help_opener() = std::move(opener);
}
