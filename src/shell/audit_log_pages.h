#pragma once
// The paging of the audit log viewer, without its screen. The log is read in
// fixed blocks of 4192 bytes, block 1 being the file's start; the viewer opens
// at the last block and pages backwards and forwards from there. A line cut in
// two by a block boundary is put back together from the kept fragments.
// Lines end in "\n", as Write_Log writes them.

#include <QFile>
#include <QString>

class AuditLogPager {
public:
    static constexpr qint64 block_size = 4192;

    enum Command { Next = 1, Previous = 2, First = 3, Last = 4 };

    enum class Activation {
        Shown,       // the last block is on show
        OpenFailed,  // reported; the viewer stays open and empty
        ReadFailed,  // reported; the viewer should go back to the menu
    };

    AuditLogPager() = default;
    AuditLogPager(const AuditLogPager&) = delete;
    AuditLogPager& operator=(const AuditLogPager&) = delete;

    // What the viewer does each time it comes to the front: (re)opens the log,
    // creating it empty if it is not there, and shows its last block.
    Activation activate(const QString& log_file);
    // Closes the file, as closing the viewer does.
    void close();

    // Page Down and Page Up: false (after a report) when the block could not be read.
    bool page_down();
    bool page_up();

    // Reads the block that `command` moves to into block_text(), with the
    // beginning and end markers, and sets the buttons' enabled state.
    bool Get_Page(int command);
    // Cuts the partial first and last lines off block_text() into the fragments.
    void Split_Page(QString& start_fragment, QString& end_fragment);

    // What the screen shows.
    const QString& text_to_show() const { return shown_; }
    bool up_enabled() const { return up_enabled_; }
    bool down_enabled() const { return down_enabled_; }

    int block_count() const { return block_count_; }
    int current_block() const { return current_block_; }
    const QString& block_text() const { return block_text_; }

private:
    bool open_log(const QString& log_file);
    bool read_block(int block, QString& text);
    void mark_file_ends();

    QFile file_;
    int block_count_ = 0;
    int current_block_ = 0;
    QString block_text_;
    QString start_fragment_;
    QString end_fragment_;
    QString shown_;
    bool up_enabled_ = false;
    bool down_enabled_ = false;
};
