#pragma once
// The screen side of bound fields: text boxes (one line or several) and check
// boxes that show a column of the data control and note every change.

#include "toolkit/data_control.h"

#include <memory>

class QCheckBox;
class QLineEdit;
class QPlainTextEdit;
class QWidget;

// Makes the bound field for a control; the control must be one of the kinds
// above. The field follows the control's changes from then on.
std::unique_ptr<BoundField> make_bound_field(QWidget* control, const QString& data_field);

// The control a bound field was made for.
QWidget* control_of(const BoundField& field);
