#pragma once
// "Select sort order": the key of the ILG list's order, kept between openings; OK sorts.
#include <QDialog>
#include <array>

class QPushButton;
class QRadioButton;

class frmIlgqsort : public QDialog {
    Q_OBJECT
public:
    explicit frmIlgqsort(QWidget *parent = nullptr);
    ~frmIlgqsort() override;

    std::array<QRadioButton *, 4> optSort{};
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;

    // The option chosen last, 0 ("Frequency") at first.
    static int sortOption;

    void optSort_Click(int index);
    void cmdOK_Click();
    // True when OK sorted.
    bool sorted() const { return sorted_; }

protected:
    void closeEvent(QCloseEvent *e) override;

private:
    bool sorted_ = false;
};
