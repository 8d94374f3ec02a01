#pragma once
// The list of pupils without a time on the exam timetable: a grid whose
// chosen rows can be dragged onto the timetable. A drag starts from a row
// already chosen, so that dragging across other rows still chooses them.

#include "ui/toolkit/data_grid.h"

#include <QPoint>

class RegisterDragGrid : public DataGrid {
    Q_OBJECT
public:
    explicit RegisterDragGrid(QWidget* parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QPoint pressed_at_;
    bool pressed_on_chosen_ = false;
};
