#include "frmIlg2rx.h"
#include "data/frmIlgqsort.h"

#include <QPushButton>

namespace {
QPointer<frmIlg2rx> theIlg2rx;
}

frmIlg2rx::frmIlg2rx()
    : FtlListWindow({Win::frmIlg2rx, "frmIlg2rx", 1, "lstIlgq", QStringLiteral("Filtering on ILG db"),
                     QStringLiteral("ILG Radio"), QStringLiteral("Load ILG file"), QStringLiteral("Query ILG db"),
                     "ilgquery.ini", 10, true})
{
    lstIlgq = list;
    connect(cmdSort, &QPushButton::clicked, this, guarded(guard_, [this] { cmdSort_Click(); }));
}

frmIlg2rx *frmIlg2rx::open() { return raiseOrLoad(theIlg2rx); }

void frmIlg2rx::cmdSort_Click()
{
    QPointer<frmIlg2rx> self(this);
    frmIlgqsort sort(this);
    sort.exec();
    // Afterwards each row as a query shows it, whatever filled the list before.
    if (self && sort.sorted())
        showList(false);
}
