#include "menu_windows_qt.h"
#include "core/frmAbout.h"
#include "core/frmSetUp.h"
#include "core/paths.h"
#include "core/shared_state.h"
#include "data/frm320Files.h"
#include "data/frmAero2rx.h"
#include "data/frmBdxc.h"
#include "data/frmConvertAero.h"
#include "data/frmConvertILG.h"
#include "data/frmIlg2rx.h"
#include "data/frmTracking.h"
#include "data/frmOwn.h"
#include "log/frmLast20.h"
#include "log/frmLog.h"
#include "log/frmMarkfreqs.h"
#include "log/frmScratchpad.h"
#include "memory/frmMemman.h"
#include "panels/frmAdvancedDSP.h"
#include "panels/frmUserdefs.h"
#include "panels/frmUserdefs545.h"
#include "panels/panel_logic.h"
#include "scan/frmScanband.h"
#include "scan/frmScanlist.h"
#include "scan/frmScanpairs.h"
#include "ui/facades.h"

#include <QStandardPaths>
#include <algorithm>

namespace {

bool isWindowsHost()
{
#ifdef Q_OS_WIN
    return true;
#else
    return false;
#endif
}

panel::ExternalCommand clockSettings()
{
    return panel::clockSettingsCommand(
        isWindowsHost(), [](const QString &p) { return !QStandardPaths::findExecutable(p).isEmpty(); });
}

} // namespace

bool MenuWindow::serves(int type) const
{
    return models.empty() || std::find(models.begin(), models.end(), type) != models.end();
}

const std::vector<MenuWindow> &menuWindows()
{
    static const std::vector<MenuWindow> rows = {
        {"mnuSetup", [](frmPanelBase &) { frmSetUp::open(); }},
        {"mnuBdxc", [](frmPanelBase &) { frmBdxc::open(); }},
        {"mnuOwn", [](frmPanelBase &) { frmOwn::open(); }},
        {"mnu320Files", [](frmPanelBase &) { frm320Files::open(); }},
        {"mnuIlg2Rx", [](frmPanelBase &) { frmIlg2rx::open(); }},
        {"mnuAero2rx", [](frmPanelBase &) { frmAero2rx::open(); }},
        {"mnuConvertILG1", [](frmPanelBase &) { frmConvertILG::open(); }},
        {"mnuConvertILG2", [](frmPanelBase &) { frmConvertILG::open(); }},
        {"mnuConvertaero", [](frmPanelBase &) { frmConvertAero::open(); }},
        {"mnuConvertaero2", [](frmPanelBase &) { frmConvertAero::open(); }},
        {"mnuLast20", [](frmPanelBase &) { frmLast20::open(); }},
        {"mnuLog", [](frmPanelBase &) { frmLog::open(); }},
        {"mnuTracking", [](frmPanelBase &) { frmTracking::open(); }},
        {"mnuScanBand", [](frmPanelBase &) { frmScanband::open(); }},
        {"mnuScanFreqlist", [](frmPanelBase &) { frmScanlist::open(); }},
        {"mnuScanfreqpairs", [](frmPanelBase &) { frmScanpairs::open(); }},
        // The RX-320's menu knows the marked frequencies and the scratchpad under names of its own.
        {"mnuMaqrkfreqs", [](frmPanelBase &) { frmMarkfreqs::open(); }, {rxNone, rxAR7030, rxNRD535, rxNRD545}},
        {"mnuMarkfreqs", [](frmPanelBase &) { frmMarkfreqs::open(); }, {rxRX320}},
        {"mnuScratchpad", [](frmPanelBase &) { frmScratchpad::open(); }, {rxNone, rxAR7030, rxNRD535, rxNRD545}},
        {"mnuSratchpad", [](frmPanelBase &) { frmScratchpad::open(); }, {rxRX320}},
        {"mnuUserdefs", [](frmPanelBase &) { frmUserdefs::open(); }, {rxNRD535}},
        {"mnuUserdefs", [](frmPanelBase &) { frmUserdefs545::open(); }, {rxNRD545}},
        // With the demodulator fitted the entry belongs to the RTTY window, which this build lacks.
        {"mnuRtty",
         [](frmPanelBase &) {
             if (slotNrdOption(3) != 1)
                 ui::MsgBox(QStringLiteral("Reserved for RTTY demodulation\nwith optional unit CMH-530"),
                            ui::vbOKOnly, QStringLiteral("RTTY demodulation"));
         },
         {rxNRD535}, [] { return slotNrdOption(3) != 1; }},
        {"mnuAdvancedDSP", [](frmPanelBase &) { frmAdvancedDSP::open(); }, {rxNRD545}},
        {"mnuPCclock",
         [](frmPanelBase &) {
             const panel::ExternalCommand c = clockSettings();
             if (!c.program.isEmpty())
                 ui::startProgram(c.program, c.args);
         },
         {}, [] { return !clockSettings().program.isEmpty(); }},
        {"mnuHtmlhelp",
         [](frmPanelBase &) {
             const QString file = isWindowsHost() ? dirPath + QStringLiteral("brelvox2.chm")
                                                  : paths::native(dirPath + QStringLiteral("brelvox2.chm"));
             const panel::ExternalCommand c = panel::helpCommand(file, isWindowsHost());
             ui::startProgram(c.program, c.args);
         }},
        {"mnuMemman", [](frmPanelBase &) { frmMemman::open(); }},
        {"mnuAbout", [](frmPanelBase &) { (new frmAbout)->Form_Load(); }},
    };
    return rows;
}
