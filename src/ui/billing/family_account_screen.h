#pragma once
// What the Money Received and Invoices screens share: walking through the
// families (read only), the family's pupils, its invoices, and its overall
// position. Each screen adds, under the invoices, what it does with the
// chosen invoice: its receipts, or its lines.

#include "toolkit/data_control.h"
#include "toolkit/gen_colours.h"

#include <QString>
#include <QWidget>
#include <memory>
#include <vector>

class QAction;
class QBoxLayout;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenuBar;
class QPlainTextEdit;
class QPushButton;
class QVBoxLayout;

struct AccountEntry;

// The words that make the shared part a screen's own.
struct FamilyAccountWords {
    QString form_name;         // "frm_Receipts"
    QString caption;           // "Money Received"
    QString module;            // "fReceipt": tag of the screen's reports
    QString invoices_label;    // "Select Invoice :"
    QString no_more_families;  // "There are no more families. " (with or without its blank)
    int help_context = 0;
};

class FamilyAccountScreen : public QWidget {
    Q_OBJECT
public:
    ~FamilyAccountScreen() override;

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_Exit = nullptr;
    QAction* mnu_Help = nullptr;
    QComboBox* cmb_Names = nullptr;
    QGroupBox* frame_Navigation = nullptr;
    QPushButton* cmd_First = nullptr;
    QPushButton* cmd_Prev = nullptr;
    QPushButton* cmd_Next = nullptr;
    QPushButton* cmd_Last = nullptr;
    QLineEdit* txt_Family_Name = nullptr;
    QLineEdit* txt_Address = nullptr;
    QLineEdit* txt_Post_Code = nullptr;
    QPlainTextEdit* txt_Notes = nullptr;
    QLineEdit* txt_Family_id = nullptr;  // hidden
    QLineEdit* txt_Pupils = nullptr;
    QCheckBox* chk_Show_Outstanding = nullptr;
    QListWidget* lst_Invoices = nullptr;
    QLineEdit* txt_Overall_Posn = nullptr;
    QGroupBox* frame_status = nullptr;
    QLineEdit* txt_Status = nullptr;

    DataControl& data() { return data_; }

    void cmd_First_Click();
    void cmd_Prev_Click();
    void cmd_Next_Click();
    void cmd_Last_Click();
    void cmb_Names_Click();
    void chk_Show_Outstanding_Click();
    void mnu_Help_Click();
    // Each time the screen comes to the front: the family and invoice handed
    // over by another screen, if any, come into view.
    virtual void Form_Activate();

    // The key of the chosen invoice (0 for "(None)"); -1 when nothing is chosen.
    int chosen_invoice_id() const;

protected:
    FamilyAccountScreen(FamilyAccountWords words, QWidget* parent = nullptr);

    // ---- Construction ----
    // A menu between Exit and Help.
    QAction* add_menu(const QString& name, const QString& caption);
    // A further navigation command, after Last.
    QPushButton* add_navigation(const QString& name, const QString& caption);
    // The area under the invoices where the screen shows what it does with one.
    QVBoxLayout* invoice_area() const { return invoice_area_; }
    // Load's last step: opens the families and shows the first.
    void Setup_Controls();

    // ---- What the screen adds ----
    // True when something in progress forbids leaving the family or invoice;
    // the screen says why.
    virtual bool Check_Progress() { return false; }
    // The chosen invoice changed: show what belongs to it.
    virtual void invoice_chosen() = 0;
    // Nothing belongs to the family's invoices: clear what shows one.
    virtual void Clear_screen() {}
    // A family or an invoice has come into view.
    virtual void Show_Selected_Invoice() {}

    // ---- The shared routines ----
    void Setup_List();
    void Move_Selected_Family();
    void Get_Pupils();
    void Get_Invoices();
    void Calculate_Overall_Posn();
    // Selects the invoice of that key, or the first when it isn't listed.
    void select_invoice(int invoice_id);
    void set_status(const QString& text);
    const FamilyAccountWords& words() const { return words_; }
    int family_id() const;
    bool family_id_is_numeric() const;
    // Fills a list with entries, each carrying its key.
    static void fill_list(QListWidget* list, const QVector<AccountEntry>& entries);
    // A list holding one entry of its own: "(None)" and the like.
    static void show_only(QListWidget* list, const QString& text, int id = 0);
    static int entry_id(const QListWidget* list, int row);

    // A move was made: the list and the family's figures follow, then the
    // first invoice is chosen.
    void after_move();
    // Moves and refuses as every navigation command does; false when refused.
    bool navigation_allowed();

    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    virtual void mnu_Exit_Click() = 0;

private:
    void build();
    QWidget* build_family_area();
    QWidget* build_invoice_list();
    void on_reposition();
    void show_list_at_current();
    void lst_Invoices_Click();

    FamilyAccountWords words_;
    DataControl data_;
    std::vector<std::unique_ptr<BoundField>> bound_;
    QHBoxLayout* navigation_row_ = nullptr;
    QVBoxLayout* invoice_area_ = nullptr;
};
