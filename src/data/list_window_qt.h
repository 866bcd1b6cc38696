#pragma once
// What the three schedule list windows share: a title row over a data grid, the file name label,
// the load, panel, height and exit buttons and the frequency box; the reader of the window's
// file kind registered while the window is open; a click's tuning carried out on the hub.
#include "core/shared_state.h"
#include "data/schedule_lists.h"
#include "ui/widgets/list_frame.h"
#include "ui/widgets/raise_or_load.h"
#include "ui/widgets/text_grid.h"
#include "ui/widgets/window_guard.h"

#include <QPointer>
#include <QWidget>
#include <initializer_list>
#include <vector>

class QLabel;
class QPushButton;

class ScheduleListWindow : public QWidget {
    Q_OBJECT
public:
    struct Look {
        Win win;
        const char *name;
        int fileKind;
        const char *gridName;
        const char *labelName;
        QString loadCaption;
        QString title;
    };
    ScheduleListWindow(const Look &look, std::initializer_list<int> titleWidths, const QStringList &titles,
                       std::initializer_list<int> gridWidths);
    ~ScheduleListWindow() override;

    TextGrid *grdTitles = nullptr;
    QLabel *fileLabel = nullptr;
    QPushButton *cmdLoad = nullptr;
    QPushButton *cmdExit = nullptr;
    QLineEdit *txtFrequencyA = nullptr;
    QPushButton *cmdHeigh = nullptr;
    QPushButton *cmdPanel = nullptr;

    void Form_Load();
    void cmdLoad_Click();
    void cmdExit_Click();
    void cmdHeigh_Click();

    TextGrid *dataGrid() const { return grid_; }

protected:
    void closeEvent(QCloseEvent *e) override;
    // The kind's reader, run by the load window's OK.
    virtual void readChosenFile() = 0;
    virtual void gridClicked(int row, int col, const QString &text) = 0;
    // The steps of a click rule on the hub, in their order.
    static void tune(const lists::TuneSteps &steps);
    // The grid emptied and filled with rows from grid row 1 on, under the blank first row.
    void showRows(std::vector<QStringList> rows);

    TextGrid *grid_ = nullptr;
    WindowGuard guard_{this};

private:
    Look look_;
    std::vector<int> widths_;
    ListFrame *frame_ = nullptr;
};

