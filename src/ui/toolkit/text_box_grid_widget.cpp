#include "ui/toolkit/text_box_grid_widget.h"

#include "ui/toolkit/screen_kit.h"

#include <QDropEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

TextBoxGridWidget::TextBoxGridWidget(int header_count, int element_count, QWidget* parent)
    : QWidget(parent), grid_(header_count, element_count)
{
    build_cells(header_count, element_count);
    grid_.set_on_paint([this] { paint(); });
    connect(txg_VScroll, &QScrollBar::valueChanged, this, [this](int value) {
        grid_.txg_vscroll_change(static_cast<short>(value));
    });
    connect(txg_HScroll, &QScrollBar::valueChanged, this, [this](int value) {
        grid_.txg_hscroll_change(static_cast<short>(value));
    });
    paint();
}

void TextBoxGridWidget::build_cells(int header_count, int element_count)
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setHorizontalSpacing(1);
    layout->setVerticalSpacing(1);
    for (int i = 0; i < header_count; ++i) {
        auto* header = new QLabel(this);
        header->setObjectName(QStringLiteral("txg_Hdr_%1").arg(i));
        header->setAlignment(Qt::AlignCenter);
        header->setMargin(3);
        QFont bold = header->font();
        bold.setBold(true);
        header->setFont(bold);
        set_frame_colour(header, txg::Header);
        QPalette palette = header->palette();
        palette.setColor(QPalette::WindowText, Qt::white);  // readable on the dark green
        header->setPalette(palette);
        txg_Hdr << header;
        layout->addWidget(header, 0, i);
    }
    const int columns = std::max(header_count, 1);
    QWidget* previous = nullptr;
    for (int i = 0; i < element_count; ++i) {
        auto* cell = new QLineEdit(this);
        cell->setObjectName(QStringLiteral("txg_Element_%1").arg(i));
        cell->setAcceptDrops(true);
        cell->installEventFilter(this);
        Enter_To_Tab(cell);
        txg_Element << cell;
        layout->addWidget(cell, 1 + i / columns, i % columns);
        if (previous)
            setTabOrder(previous, cell);
        previous = cell;
    }
    const int element_rows = (element_count + columns - 1) / columns;
    txg_VScroll = new QScrollBar(Qt::Vertical, this);
    txg_VScroll->setObjectName(QStringLiteral("txg_VScroll"));
    layout->addWidget(txg_VScroll, 1, columns, std::max(element_rows, 1), 1);
    txg_HScroll = new QScrollBar(Qt::Horizontal, this);
    txg_HScroll->setObjectName(QStringLiteral("txg_HScroll"));
    layout->addWidget(txg_HScroll, 1 + element_rows, 0, 1, columns);
}

void TextBoxGridWidget::set_column_width(int visual_column, int characters, int stretch)
{
    // A column without stretch keeps its width; the others share what is left.
    const int width = fontMetrics().averageCharWidth() * characters + 12;
    QList<QWidget*> cells;
    if (visual_column < txg_Hdr.size())
        cells << txg_Hdr[visual_column];
    for (int i = visual_column; i < txg_Element.size() && !txg_Hdr.isEmpty(); i += txg_Hdr.size())
        cells << txg_Element[i];
    for (QWidget* cell : cells) {
        if (stretch == 0) {
            cell->setFixedWidth(width);
        } else {
            cell->setMinimumWidth(width);
            cell->setSizePolicy(QSizePolicy::Ignored, cell->sizePolicy().verticalPolicy());
        }
    }
    static_cast<QGridLayout*>(layout())->setColumnStretch(visual_column, stretch);
}

int TextBoxGridWidget::element_index(const QWidget* cell) const
{
    for (int i = 0; i < txg_Element.size(); ++i)
        if (txg_Element[i] == cell)
            return i;
    return -1;
}

// ---- Painting what the grid worked out ----

void TextBoxGridWidget::paint_bar(QScrollBar* bar, const txg_bar& state)
{
    const QSignalBlocker quiet(bar);
    bar->setRange(state.min, std::max(state.min, state.max));
    bar->setValue(state.value);
    bar->setSingleStep(state.small_change);
    bar->setPageStep(std::max<int>(state.large_change, 1));
    bar->setVisible(state.visible);
}

void TextBoxGridWidget::paint()
{
    const QVector<txg_header>& headers = grid_.headers();
    for (int i = 0; i < txg_Hdr.size() && i < headers.size(); ++i) {
        txg_Hdr[i]->setText(headers[i].text);
        txg_Hdr[i]->setVisible(headers[i].visible);
    }
    const QVector<txg_cell>& cells = grid_.elements();
    for (int i = 0; i < txg_Element.size() && i < cells.size(); ++i) {
        QLineEdit* element = txg_Element[i];
        const txg_cell& cell = cells[i];
        const QSignalBlocker quiet(element);
        if (element->text() != cell.text) {
            element->setText(cell.text);
            element->setCursorPosition(0);  // a long name shows its beginning
        }
        element->setReadOnly(cell.locked);
        element->setFocusPolicy(cell.tab_stop ? Qt::StrongFocus : Qt::ClickFocus);
        element->setToolTip(cell.tooltip);
        if (field_colour(element) != cell.background)
            set_field_colour(element, cell.background);
        element->setVisible(cell.visible);
    }
    paint_bar(txg_VScroll, grid_.vscroll());
    paint_bar(txg_HScroll, grid_.hscroll());
}

// ---- Events ----

bool TextBoxGridWidget::eventFilter(QObject* watched, QEvent* event)
{
    const int element = element_index(qobject_cast<QWidget*>(watched));
    if (element < 0)
        return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
            grid_.txg_click(element);
            emit Element_Click(element);
        }
        break;
    case QEvent::FocusOut:
        if (Is_Field_Left(event))
            emit Element_LostFocus(element);
        break;
    case QEvent::DragEnter:
    case QEvent::DragMove: {
        auto* drag = static_cast<QDropEvent*>(event);
        if (drag->source()) {
            drag->acceptProposedAction();
            return true;
        }
        break;
    }
    case QEvent::Drop: {
        auto* drop = static_cast<QDropEvent*>(event);
        drop->acceptProposedAction();
        emit Element_Drop(element, drop->source());
        return true;
    }
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void TextBoxGridWidget::wheelEvent(QWheelEvent* event)
{
    // The wheel over the cells moves the view by rows, as the bar's arrows do.
    const int steps = event->angleDelta().y() / 120;
    if (steps != 0 && txg_VScroll->isEnabled())
        txg_VScroll->setValue(txg_VScroll->value() - steps * txg_VScroll->singleStep());
    event->accept();
}
