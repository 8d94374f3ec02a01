#pragma once
// A report on the screen, page by page, as it will print: the report that
// Init_Report has prepared, laid out when the screen comes to the front. The
// print button checks the paper first and prints what is shown.

#include "reportengine/page_model.h"

#include <QPrinter>
#include <QString>
#include <QWidget>
#include <memory>

class QComboBox;
class QLabel;
class QPushButton;
class QScrollArea;
class QStackedWidget;
class PageView;

// What became of a viewer run, for the screen that opened the viewer: that
// screen sets Started before opening it; the viewer marks Finished once the
// report is on view and Failed when it could not be shown. Anything else
// means the run was left.
namespace view_state {
inline constexpr int Finished = 1;
inline constexpr int Failed = 2;
inline constexpr int Started = 3;
}  // namespace view_state
int& View_Report_State();

class frm_View_Report : public QWidget {
    Q_OBJECT
public:
    // `name` begins the caption: "<name> View Report Screen".
    explicit frm_View_Report(const QString& name, QWidget* parent = nullptr);
    ~frm_View_Report() override;

    QPushButton* cmd_First = nullptr;
    QPushButton* cmd_Prev = nullptr;
    QPushButton* cmd_Next = nullptr;
    QPushButton* cmd_Last = nullptr;
    QLabel* lbl_Page = nullptr;        // "Page 2 of 7"
    QComboBox* cmb_Zoom = nullptr;
    QPushButton* cmd_Print = nullptr;
    QPushButton* cmd_Close = nullptr;
    QLabel* lbl_No_Data = nullptr;     // "There is no data to display"

    // The pages shown, and the one on view (from 0).
    const reportengine::PageModel& pages() const { return model_; }
    int page_on_view() const { return page_; }
    // True when the report could not be laid out and the screen gave up.
    bool failed() const { return failed_; }

    void show_page(int page);
    void cmd_Print_Click();
    // The printer the print button uses; a test may point it at a file.
    QPrinter& printer() { return printer_; }

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void Form_Activate();
    void report_source_error();
    void apply_zoom();
    // The paper check for the printer in use, with the offer to choose another
    // and then to make the report fit the printer; false when the user stops.
    bool check_paper_before_printing(bool& printer_chosen);
    bool lay_out();

    reportengine::PageModel model_;
    int page_ = 0;
    bool activated_ = false;
    bool failed_ = false;
    QPrinter printer_;
    QStackedWidget* stack_ = nullptr;
    QScrollArea* scroll_ = nullptr;
    PageView* view_ = nullptr;
};
