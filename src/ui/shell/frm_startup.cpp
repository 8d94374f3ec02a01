#include "ui/shell/frm_startup.h"

#include "shell/app_globals.h"
#include "ui/toolkit/screen_kit.h"

#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>

frm_Startup::frm_Startup(QWidget* parent) : QWidget(parent, Qt::SplashScreen)
{
    setObjectName(QStringLiteral("frm_Startup"));
    // The application's name is the title's first word; the title adds the short version.
    const QString name = App_Title().section(QLatin1Char(' '), 0, 0);
    setWindowTitle(name + QStringLiteral(" is starting up"));
    colours::Rgb colour;
    Screen_Setup(this, true, colour);

    // A framed card: the name in large letters, and what is going on below it.
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto* card = new QFrame(this);
    card->setFrameShape(QFrame::Box);
    card->setLineWidth(1);
    outer->addWidget(card);
    auto* layout = new QVBoxLayout(card);
    layout->setContentsMargins(24, 20, 24, 20);
    auto* title = new QLabel(name, card);
    QFont big = title->font();
    big.setPointSizeF(big.pointSizeF() * 2);
    big.setBold(true);
    title->setFont(big);
    title->setAlignment(Qt::AlignCenter);
    auto* note = new QLabel(QStringLiteral("is starting up"), card);
    note->setAlignment(Qt::AlignCenter);
    layout->addStretch(1);
    layout->addWidget(title);
    layout->addWidget(note);
    layout->addStretch(1);
    // Room around the name, whatever the font.
    card->setMinimumWidth(title->sizeHint().width() * 2);
}
