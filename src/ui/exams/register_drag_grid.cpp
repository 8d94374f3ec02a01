#include "ui/exams/register_drag_grid.h"

#include <QApplication>
#include <QDrag>
#include <QItemSelectionModel>
#include <QMimeData>
#include <QMouseEvent>

RegisterDragGrid::RegisterDragGrid(QWidget* parent) : DataGrid(parent) {}

void RegisterDragGrid::mousePressEvent(QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    pressed_on_chosen_ = event->button() == Qt::LeftButton && index.isValid() && event->modifiers() == Qt::NoModifier
                         && selectionModel()->isRowSelected(index.row(), QModelIndex());
    pressed_at_ = event->position().toPoint();
    // A press on a chosen row keeps the choice whole, ready to be dragged.
    if (pressed_on_chosen_)
        return;
    DataGrid::mousePressEvent(event);
}

void RegisterDragGrid::mouseMoveEvent(QMouseEvent* event)
{
    if (!pressed_on_chosen_ || !(event->buttons() & Qt::LeftButton)) {
        DataGrid::mouseMoveEvent(event);
        return;
    }
    if ((event->position().toPoint() - pressed_at_).manhattanLength() < QApplication::startDragDistance())
        return;
    pressed_on_chosen_ = false;
    auto* drag = new QDrag(this);
    auto* pupils = new QMimeData;
    pupils->setText(objectName());
    drag->setMimeData(pupils);
    drag->exec(Qt::CopyAction);
}

void RegisterDragGrid::mouseReleaseEvent(QMouseEvent* event)
{
    // Pressed and let go without a drag: an ordinary click after all.
    if (pressed_on_chosen_) {
        pressed_on_chosen_ = false;
        QMouseEvent press(QEvent::MouseButtonPress, event->position(), event->globalPosition(), Qt::LeftButton,
                          Qt::LeftButton, event->modifiers());
        DataGrid::mousePressEvent(&press);
    }
    DataGrid::mouseReleaseEvent(event);
}
