#include "ui/frm_startup.h"

#include "shell/app_globals.h"

#include <QLabel>
#include <QVBoxLayout>

frm_Startup::frm_Startup(QWidget* parent) : QWidget(parent, Qt::SplashScreen)
{
    setObjectName(QStringLiteral("frm_Startup"));
    setWindowTitle(QStringLiteral("Quillary is starting up"));
    auto* layout = new QVBoxLayout(this);
    auto* title = new QLabel(App_Title(), this);
    QFont big = title->font();
    big.setPointSize(big.pointSize() * 2);
    big.setBold(true);
    title->setFont(big);
    title->setAlignment(Qt::AlignCenter);
    auto* note = new QLabel(QStringLiteral("is starting up"), this);
    note->setAlignment(Qt::AlignCenter);
    layout->addWidget(title);
    layout->addWidget(note);
    setAutoFillBackground(true);
    QPalette green = palette();
    green.setColor(QPalette::Window, QColor(192, 255, 192));
    setPalette(green);
    setMinimumSize(320, 140);
}
