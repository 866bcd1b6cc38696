#pragma once
// The NRD-545's user settings: the receiver's own list of items, by their numbers, set one at a
// time; "Reset to Defaults" holds the lock meanwhile, so the run goes out without remote frames.
#include "panels/frmUserdefs.h"

class clsNRD545;

class frmUserdefs545 : public frmUserdefsBase {
    Q_OBJECT
public:
    explicit frmUserdefs545(QWidget *parent = nullptr);
    ~frmUserdefs545() override;

    static frmUserdefs545 *open();
    void Form_Load();

    std::unique_ptr<clsNRD545> NRD545A;

protected:
    void sendUserdef(int index, int value) override;
    const std::vector<nrdpanel::DefaultRow> &defaultRows() const override { return nrdpanel::nrd545Defaults(); }
    void beforeDefaults() override;
    void afterDefaults() override;
    void releaseDriver() override;

private:
    void holdLock(int v);
    bool tookLock_ = false;
};
