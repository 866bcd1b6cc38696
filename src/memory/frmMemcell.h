#pragma once
// The memory cell editor: one cell of the memory image as a form of lists, written back to the
// memory window's image, to the receiver's cell, or to both. The memory window opens it modally
// for one of four actions: change (1), store the receiver's present setting (2), copy (3),
// delete (4). It works on the shared memRecord, memTag and memRow.
#include "memory/memman_logic.h"
#include "ui/widgets/window_guard.h"

#include <QDialog>
#include <array>
#include <functional>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class RxDriver;

class frmMemcell : public QDialog {
    Q_OBJECT
public:
    enum Action { Change = 1, StoreRxSetting = 2, Copy = 3, Delete = 4 };

    // Builds and loads the window (action 2 reads the receiver through driver, which may be
    // null without one). rowChanged(r) is called after "To MMW" has rewritten row r of the image.
    frmMemcell(int action, const QString &caption, RxDriver *driver, std::function<void(int row)> rowChanged,
               QWidget *parent = nullptr);
    ~frmMemcell() override;

    int action() const { return action_; }

    void cmbMode_Change();
    // 0 "To MMW", 1 "To RxM".
    void cmdToMMWorRM_Click(int index);
    void cmdCancel_Click();

    QComboBox *cmbCellnr = nullptr;
    QLineEdit *txtFrequency = nullptr;
    QComboBox *cmbMode = nullptr;
    QComboBox *cmbBandwidth = nullptr;
    QComboBox *cmbAttenuator = nullptr;
    QComboBox *cmbAgcspeed = nullptr;
    QComboBox *cmbPBS = nullptr;
    QLabel *lblSqlBfo = nullptr;
    QComboBox *cmbSqlBfo = nullptr;
    QComboBox *cmbScanyn = nullptr;
    QLineEdit *txtMemtag = nullptr;
    std::array<QPushButton *, 2> cmdToMMWorRM{};
    QPushButton *cmdCancel = nullptr;

protected:
    void closeEvent(QCloseEvent *e) override;
    void reject() override;

private:
    void build();
    void Form_Load();
    void Form_Unload();
    void fillLists();
    void fillSqlBfo();
    void showFields(const memman::CellFields &f);
    memman::CellFields receiverFields();
    memman::CellFields shownFields() const;

    int action_;
    RxDriver *driver_;
    std::function<void(int)> rowChanged_;
    bool sqlIsBfo_ = false;
    bool unloaded_ = false;
    WindowGuard guard_{this};
};
