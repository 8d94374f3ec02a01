#pragma once
// A screen's text box as the routines that check a typed name see it.

#include "shell/file_checks.h"

#include <QLineEdit>

class LineEditBox : public TextBoxLike {
public:
    explicit LineEditBox(QLineEdit* box) : box_(box) {}
    QString text() const override { return box_->text(); }
    void setText(const QString& text) override { box_->setText(text); }
    void setFocus() override { box_->setFocus(Qt::OtherFocusReason); }

private:
    QLineEdit* box_;
};
