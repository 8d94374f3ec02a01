#include "shell/audit_log_pages.h"

#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/file_errors.h"

#include <QFileInfo>

namespace {

const QLatin1String beginning_marker("\n  --  Beginning of File  --  \n");
const QLatin1String end_marker("\n  --  End of File  --  \n");

// The platform's Trim: blanks only, line ends stay.
QString trim_blanks(const QString& text)
{
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && text.at(first) == QLatin1Char(' '))
        ++first;
    while (last > first && text.at(last - 1) == QLatin1Char(' '))
        --last;
    return text.mid(first, last - first);
}

bool is_utf8_continuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// A block's bytes as text. The log is UTF-8, so a character that a block
// boundary cuts belongs wholly to the block in which it starts: `bytes` holds
// the block and up to three bytes after it.
QString decode_block(const QByteArray& bytes, qint64 block_size, bool skip_leading_continuation)
{
    qsizetype begin = 0;
    if (skip_leading_continuation) {
        while (begin < 3 && begin < bytes.size() && is_utf8_continuation(bytes.at(begin)))
            ++begin;
    }
    qsizetype end = qMin<qsizetype>(bytes.size(), block_size);
    while (end < bytes.size() && is_utf8_continuation(bytes.at(end)))
        ++end;
    return QString::fromUtf8(bytes.constData() + begin, end - begin);
}

void show_failure(const QString& what, const engine::ErrState& error)
{
    engine::MsgBox(what + QStringLiteral("%1 - %2").arg(error.Number).arg(error.Description), engine::mb::Critical,
                   App_Title());
}

}  // namespace

AuditLogPager::Activation AuditLogPager::activate(const QString& log_file)
{
    close();
    start_fragment_.clear();
    end_fragment_.clear();
    block_text_.clear();
    shown_.clear();
    up_enabled_ = down_enabled_ = false;

    if (!open_log(log_file))
        return Activation::OpenFailed;
    block_count_ = static_cast<int>(file_.size() / block_size) + 1;
    if (!Get_Page(Last))
        return Activation::ReadFailed;
    Split_Page(start_fragment_, end_fragment_);
    shown_ = block_text_ + end_fragment_;
    return Activation::Shown;
}

void AuditLogPager::close()
{
    file_.close();
    block_count_ = 0;
    current_block_ = 0;
}

bool AuditLogPager::page_down()
{
    if (!down_enabled_)
        return true;
    if (!Get_Page(Next))
        return false;
    QString new_start, new_end;
    Split_Page(new_start, new_end);
    // The old end fragment and the new start fragment are the two halves of
    // the line that the boundary cut.
    shown_ = end_fragment_ + new_start + block_text_;
    start_fragment_ = new_start;
    end_fragment_ = new_end;
    return true;
}

bool AuditLogPager::page_up()
{
    if (!up_enabled_)
        return true;
    if (!Get_Page(Previous))
        return false;
    QString new_start, new_end;
    Split_Page(new_start, new_end);
    shown_ = block_text_ + new_end + start_fragment_;
    start_fragment_ = new_start;
    end_fragment_ = new_end;
    return true;
}

bool AuditLogPager::Get_Page(int command)
{
    int block = current_block_;
    switch (command) {
    case Next: block = qMin(current_block_ + 1, block_count_); break;
    case Previous: block = qMax(current_block_ - 1, 1); break;
    case First: block = 1; break;
    case Last: block = block_count_; break;
    default: break;
    }

    QString text;
    if (!read_block(block, text)) {
        show_failure(QStringLiteral("Could not read Audit Log File, error:"), read_failure(file_));
        return false;
    }
    current_block_ = block;
    block_text_ = text;
    mark_file_ends();
    return true;
}

void AuditLogPager::Split_Page(QString& start_fragment, QString& end_fragment)
{
    start_fragment.clear();
    end_fragment.clear();
    if (block_text_.isEmpty())
        return;
    const qsizetype first = block_text_.indexOf(QLatin1Char('\n'));
    if (first < 0) {
        start_fragment = block_text_;
        block_text_.clear();
        return;
    }
    const qsizetype last = block_text_.lastIndexOf(QLatin1Char('\n'));
    end_fragment = trim_blanks(block_text_.mid(last + 1));
    start_fragment = trim_blanks(block_text_.left(first + 1));
    block_text_ = block_text_.mid(first + 1, last - first);
}

bool AuditLogPager::open_log(const QString& log_file)
{
    // Opening for random access creates a missing file, empty.
    if (!log_file.isEmpty() && !QFileInfo::exists(log_file)) {
        QFile creator(log_file);
        if (!creator.open(QIODevice::WriteOnly | QIODevice::Append)) {
            show_failure(QStringLiteral("Could not open Audit Log File, error:"),
                         open_failure(log_file, creator, file_errors::Purpose::Creating));
            return false;
        }
    }
    file_.setFileName(log_file);
    if (!file_.open(QIODevice::ReadOnly)) {
        show_failure(QStringLiteral("Could not open Audit Log File, error:"), open_failure(log_file, file_));
        return false;
    }
    return true;
}

bool AuditLogPager::read_block(int block, QString& text)
{
    if (!file_.isOpen() || block < 1 || !file_.seek((block - 1) * block_size))
        return false;
    const QByteArray bytes = file_.read(block_size + 3);
    if (bytes.isNull() && file_.error() != QFileDevice::NoError)
        return false;
    text = decode_block(bytes, block_size, block > 1);
    return true;
}

void AuditLogPager::mark_file_ends()
{
    up_enabled_ = down_enabled_ = true;
    if (current_block_ == 1) {
        block_text_.prepend(beginning_marker);
        up_enabled_ = false;
    }
    if (current_block_ == block_count_) {
        block_text_.append(end_marker);
        down_enabled_ = false;
    }
}
