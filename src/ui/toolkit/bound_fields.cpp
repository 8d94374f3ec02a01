#include "ui/toolkit/bound_fields.h"

#include "engine/vb_values.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTextDocument>

namespace {

class ControlField : public BoundField {
public:
    ControlField(QWidget* control, const QString& data_field) : BoundField(data_field), control_(control) {}
    QWidget* control() const { return control_; }

private:
    QWidget* control_;
};

class LineEditField : public ControlField {
public:
    LineEditField(QLineEdit* edit, const QString& data_field) : ControlField(edit, data_field), edit_(edit)
    {
        QObject::connect(edit, &QLineEdit::textChanged, [this] { note_change(); });
    }
    QVariant value() const override { return edit_->text().isEmpty() ? QVariant() : QVariant(edit_->text()); }
    QString trimmed_text() const override { return edit_->text().trimmed(); }

protected:
    void show_value(const QVariant& value) override
    {
        edit_->setText(text_of(value));
        // A value longer than the box shows its beginning, not its end.
        edit_->setCursorPosition(0);
    }
    void apply_max_length(int characters) override
    {
        edit_->setMaxLength(characters > 0 ? characters : QLineEdit().maxLength());
    }

private:
    QLineEdit* edit_;
};

class PlainTextField : public ControlField {
public:
    PlainTextField(QPlainTextEdit* edit, const QString& data_field) : ControlField(edit, data_field), edit_(edit)
    {
        QObject::connect(edit, &QPlainTextEdit::textChanged, [this] {
            keep_within_limit();
            note_change();
        });
    }
    QVariant value() const override
    {
        const QString text = edit_->toPlainText();
        return text.isEmpty() ? QVariant() : QVariant(text);
    }
    QString trimmed_text() const override { return edit_->toPlainText().trimmed(); }

protected:
    void show_value(const QVariant& value) override { edit_->setPlainText(text_of(value)); }
    void apply_max_length(int characters) override
    {
        limit_ = characters;
        keep_within_limit();
    }

private:
    // A several-line box has no limit of its own: what goes beyond the
    // column's size is taken off again, from the end of what was just typed
    // or pasted (the text before the cursor), as a one-line box refuses it.
    void keep_within_limit()
    {
        if (limit_ <= 0 || cutting_)
            return;
        const int length = edit_->document()->characterCount() - 1;  // less the closing paragraph mark
        if (length <= limit_)
            return;
        const int excess = length - limit_;
        int end = edit_->textCursor().position();
        int start = end - excess;
        if (start < 0) {
            start = limit_;
            end = length;
        }
        cutting_ = true;
        QTextCursor cut(edit_->document());
        cut.setPosition(start);
        cut.setPosition(end, QTextCursor::KeepAnchor);
        cut.removeSelectedText();
        cutting_ = false;
    }

    QPlainTextEdit* edit_;
    int limit_ = 0;
    bool cutting_ = false;
};

class CheckBoxField : public ControlField {
public:
    CheckBoxField(QCheckBox* box, const QString& data_field) : ControlField(box, data_field), box_(box)
    {
        QObject::connect(box, &QCheckBox::toggled, [this] { note_change(); });
    }
    QVariant value() const override { return box_->isChecked(); }
    bool is_check_box() const override { return true; }

protected:
    void show_value(const QVariant& value) override
    {
        bool checked = false;
        if (!value.isNull() && !vb::CBool(value, checked))
            checked = false;
        box_->setChecked(checked);
    }

private:
    QCheckBox* box_;
};

}  // namespace

std::unique_ptr<BoundField> make_bound_field(QWidget* control, const QString& data_field)
{
    if (auto* edit = qobject_cast<QLineEdit*>(control))
        return std::make_unique<LineEditField>(edit, data_field);
    if (auto* text = qobject_cast<QPlainTextEdit*>(control))
        return std::make_unique<PlainTextField>(text, data_field);
    if (auto* box = qobject_cast<QCheckBox*>(control))
        return std::make_unique<CheckBoxField>(box, data_field);
    return nullptr;
}

QWidget* control_of(const BoundField& field)
{
    return static_cast<const ControlField&>(field).control();
}
