#pragma once
// Register of Pupils attending Courses: any number of pupils put onto any
// number of courses in one action, or taken off a course's register. The
// courses and pupils are chosen by walking their lists; the register shows
// the course last gone to. The lists are those of the moment the screen
// opened.

#include "courses/register_changes.h"
#include "engine/recordset.h"

#include <QString>
#include <QWidget>
#include <memory>

class QAction;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenuBar;
class QPushButton;
class RegisterGrid;

class frm_Register : public QWidget {
    Q_OBJECT
public:
    explicit frm_Register(QWidget* parent = nullptr);
    ~frm_Register() override;

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_Exit = nullptr;
    QAction* mnu_Help = nullptr;

    RegisterGrid* dbg_Course = nullptr;
    RegisterGrid* dbg_Pupil = nullptr;
    RegisterGrid* dbg_Register = nullptr;
    // The grids' captions, shown above them.
    QLabel* course_caption = nullptr;
    QLabel* pupil_caption = nullptr;
    QLabel* register_caption = nullptr;
    QLineEdit* txt_Num_Records = nullptr;
    QPushButton* cmd_Add = nullptr;
    QPushButton* cmd_Delete = nullptr;

    QGroupBox* frame_status = nullptr;
    QLineEdit* txt_Status = nullptr;

    // The record sets behind the grids: the courses in the user's preferred
    // order, the pupils not hidden, and the register on view.
    engine::Recordset* data_Courses() const { return courses_.get(); }
    engine::Recordset* data_Pupils() const { return pupils_.get(); }
    engine::Recordset* data_Register() const { return register_.rows(); }

    // What the commands do, so that they can be pressed by program.
    void cmd_Add_Click();
    void cmd_Delete_Click();
    void mnu_Exit_Click();
    void mnu_Help_Click();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void build_controls();
    RegisterGrid* make_grid(const QString& name, const QString& caption, QLabel*& caption_label);
    void connect_controls();
    void Setup_Controls();
    // Shows the register of a course under the hourglass, with its caption and count.
    void Display_Register(qint32 course_id, const QString& title);
    void dbg_Course_Reached();
    void report_grid_error(const QString& label) const;
    void report_command_error(const QString& routine) const;
    void close_record_sets();

    std::unique_ptr<engine::Recordset> courses_;
    std::unique_ptr<engine::Recordset> pupils_;
    ShownRegister register_;
};
