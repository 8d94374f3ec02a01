#include "ui/toolkit/help_window.h"

#include "toolkit/help_pages.h"
#include "ui/toolkit/screen_kit.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QPointer>
#include <QPushButton>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace {

// Enter in the page must not press a button.
QPushButton* help_button(QWidget* parent, const QString& name, const QString& caption)
{
    QPushButton* button = make_button(parent, name, caption);
    button->setAutoDefault(false);
    return button;
}

QPointer<HelpWindow>& the_window()
{
    static QPointer<HelpWindow> window;
    return window;
}

}  // namespace

HelpWindow::HelpWindow(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("help_window"));
    setWindowTitle(QStringLiteral("Quillary Help"));
    // Closing help never ends the program, whatever else is on view.
    setAttribute(Qt::WA_QuitOnClose, false);
    colours::Rgb colour;
    Screen_Setup(this, true, colour);

    // The commands along the top, the page below them.
    auto* layout = new QVBoxLayout(this);
    auto* commands = new QHBoxLayout;
    cmd_Contents = help_button(this, QStringLiteral("cmd_Contents"), QStringLiteral("&Contents"));
    cmd_Back = help_button(this, QStringLiteral("cmd_Back"), QStringLiteral("&Back"));
    cmd_Forward = help_button(this, QStringLiteral("cmd_Forward"), QStringLiteral("&Forward"));
    cmd_Close = help_button(this, QStringLiteral("cmd_Close"), QStringLiteral("C&lose"));
    commands->addWidget(cmd_Contents);
    commands->addWidget(cmd_Back);
    commands->addWidget(cmd_Forward);
    commands->addStretch(1);
    commands->addWidget(cmd_Close);
    layout->addLayout(commands);

    txt_Help = new QTextBrowser(this);
    txt_Help->setObjectName(QStringLiteral("txt_Help"));
    txt_Help->setAccessibleName(QStringLiteral("Help page"));
    // Pages on the web open in the desktop's browser; the manual's own stay here.
    txt_Help->setOpenExternalLinks(true);
    layout->addWidget(txt_Help, 1);

    cmd_Back->setEnabled(false);
    cmd_Forward->setEnabled(false);
    connect(cmd_Contents, &QPushButton::clicked, this, &HelpWindow::contents_clicked);
    connect(cmd_Back, &QPushButton::clicked, txt_Help, &QTextBrowser::backward);
    connect(cmd_Forward, &QPushButton::clicked, txt_Help, &QTextBrowser::forward);
    connect(cmd_Close, &QPushButton::clicked, this, &QWidget::close);
    connect(txt_Help, &QTextBrowser::backwardAvailable, cmd_Back, &QPushButton::setEnabled);
    connect(txt_Help, &QTextBrowser::forwardAvailable, cmd_Forward, &QPushButton::setEnabled);
    connect(txt_Help, &QTextBrowser::sourceChanged, this, &HelpWindow::source_changed);

    // A page reads best about sixty characters wide and forty lines high.
    const QFontMetrics metrics = txt_Help->fontMetrics();
    resize(QSize(metrics.horizontalAdvance(QLatin1Char('n')) * 90, metrics.lineSpacing() * 40)
               .expandedTo(minimumSizeHint()));
}

void HelpWindow::show_page(const QString& page)
{
    // The pane reads the manual's style sheet itself: it doesn't follow the
    // pages' links to it.
    QFile style(QFileInfo(page).dir().filePath(QStringLiteral("manual.css")));
    if (style.open(QIODevice::ReadOnly | QIODevice::Text))
        txt_Help->document()->setDefaultStyleSheet(QString::fromUtf8(style.readAll()));
    const QUrl url = QUrl::fromLocalFile(page);
    if (txt_Help->source() != url)
        txt_Help->setSource(url);
    // Help opened afresh starts a new trail: Back leads nowhere before this page.
    if (!isVisible())
        txt_Help->clearHistory();
    show();
    raise();
    activateWindow();
}

QString HelpWindow::page() const
{
    return txt_Help->source().toLocalFile();
}

void HelpWindow::contents_clicked()
{
    const help::Request request = help::resolve(help::Contents, 0);
    if (request.act)
        txt_Help->setSource(QUrl::fromLocalFile(request.page));
}

void HelpWindow::source_changed(const QUrl& /*source*/)
{
    const QString title = txt_Help->documentTitle().trimmed();
    setWindowTitle(title.isEmpty() ? QStringLiteral("Quillary Help") : QStringLiteral("Help - ") + title);
}

HelpWindow* Help_Window()
{
    if (!the_window())
        the_window() = new HelpWindow;
    return the_window();
}

HelpWindow* existing_help_window()
{
    return the_window();
}
