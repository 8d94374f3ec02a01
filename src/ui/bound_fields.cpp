#include "ui/bound_fields.h"

#include "engine/vb_values.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>

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
    void show_value(const QVariant& value) override { edit_->setText(text_of(value)); }

private:
    QLineEdit* edit_;
};

class PlainTextField : public ControlField {
public:
    PlainTextField(QPlainTextEdit* edit, const QString& data_field) : ControlField(edit, data_field), edit_(edit)
    {
        QObject::connect(edit, &QPlainTextEdit::textChanged, [this] { note_change(); });
    }
    QVariant value() const override
    {
        const QString text = edit_->toPlainText();
        return text.isEmpty() ? QVariant() : QVariant(text);
    }
    QString trimmed_text() const override { return edit_->toPlainText().trimmed(); }

protected:
    void show_value(const QVariant& value) override { edit_->setPlainText(text_of(value)); }

private:
    QPlainTextEdit* edit_;
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
