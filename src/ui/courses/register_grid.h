#pragma once
// A grid of the course register screen, whose chosen rows build up as the
// secretary goes along: each row moved onto with the keys joins the rows
// chosen, a click chooses a row or drops a chosen one, Space does the same
// for the current row, and nothing is chosen by the grid itself taking the
// focus. The rows are remembered in the order they were chosen, which is the
// order the register's commands take them in.

#include "ui/toolkit/data_grid.h"

class RegisterGrid : public DataGrid {
    Q_OBJECT
public:
    explicit RegisterGrid(QWidget* parent = nullptr);

    // The bookmarks of the chosen rows, in the order they were chosen.
    QList<engine::Bookmark> SelBookmarks_In_Order() const { return order_; }
    // Chooses every row; those not chosen yet follow in row order.
    void choose_all();

signals:
    // The secretary moved onto a row, or clicked the current one.
    void Row_Reached();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void current_moved(const QModelIndex& current);
    void selection_changed(const QItemSelection& selected, const QItemSelection& deselected);

    bool pressing_ = false;  // a click or drag chooses or drops its own rows
    bool adopting_ = false;  // the grid making its first row current on taking the focus
    QList<engine::Bookmark> order_;
};
