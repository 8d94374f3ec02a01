#pragma once
// The program's own help window: the user manual's pages, read from the
// install folder's "manual", in a browser pane with Contents, Back and
// Forward. One window serves every screen; Show_Help opens it at a page.
// It needs no web browser on the machine.

#include <QWidget>

class QPushButton;
class QTextBrowser;
class QUrl;

class HelpWindow : public QWidget {
    Q_OBJECT
public:
    explicit HelpWindow(QWidget* parent = nullptr);

    QPushButton* cmd_Contents = nullptr;
    QPushButton* cmd_Back = nullptr;
    QPushButton* cmd_Forward = nullptr;
    QPushButton* cmd_Close = nullptr;
    QTextBrowser* txt_Help = nullptr;

    // Shows the window at a page of the manual (a file path), in front.
    void show_page(const QString& page);
    // The page on show, as a file path; empty before the first.
    QString page() const;

private:
    void contents_clicked();
    void source_changed(const QUrl& source);
};

// The one help window, made on first use.
HelpWindow* Help_Window();
// The help window if it has been made; null otherwise.
HelpWindow* existing_help_window();
