#include "frmAero2rx.h"

namespace {
QPointer<frmAero2rx> theAero2rx;
}

frmAero2rx::frmAero2rx()
    : FtlListWindow({Win::frmAero2rx, "frmAero2rx", 2, "lstAero", QStringLiteral("Filtering on Aerolist"),
                     QStringLiteral("Aero list"), QStringLiteral("Load Aero file"), QStringLiteral("Query Aero db"),
                     "aeroquery.ini", 60, false})
{
    lstAero = list;
}

frmAero2rx *frmAero2rx::open() { return raiseOrLoad(theAero2rx); }
