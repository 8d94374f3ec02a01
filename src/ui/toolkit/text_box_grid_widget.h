#pragma once
// The cells of a TextBoxGrid on a screen: a row of headers (`txg_Hdr`) over
// a block of single-line elements (`txg_Element`), a vertical bar at the
// right (`txg_VScroll`) and a horizontal one below (`txg_HScroll`). What the
// cells show comes from the grid (toolkit/text_box_grid.h), painted whole
// after each of its routines; the user's clicks and scrolls go to the grid,
// and leaving an element, or dropping a drag on one, is handed on to the
// screen, which decides what the edit means.

#include "toolkit/text_box_grid.h"

#include <QVector>
#include <QWidget>

class QLabel;
class QLineEdit;
class QScrollBar;

class TextBoxGridWidget : public QWidget {
    Q_OBJECT
public:
    TextBoxGridWidget(int header_count, int element_count, QWidget* parent = nullptr);

    TextBoxGrid& grid() { return grid_; }
    const TextBoxGrid& grid() const { return grid_; }

    // A visual column's width in average characters; the spare room is
    // shared out by stretch.
    void set_column_width(int visual_column, int characters, int stretch = 0);


    QVector<QLabel*> txg_Hdr;
    QVector<QLineEdit*> txg_Element;
    QScrollBar* txg_VScroll = nullptr;
    QScrollBar* txg_HScroll = nullptr;

signals:
    // After the grid has taken the click.
    void Element_Click(int element);
    void Element_LostFocus(int element);
    // A drag from `source` was dropped on the element.
    void Element_Drop(int element, QObject* source);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void build_cells(int header_count, int element_count);
    int element_index(const QWidget* cell) const;
    void paint();
    void paint_bar(QScrollBar* bar, const txg_bar& state);

    TextBoxGrid grid_;
};
