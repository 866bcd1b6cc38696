#pragma once
// Hands the line's bytes to a model's simulator and counts what it sends back, so that a
// benchmark can set its time against the line time of the bytes each way.
#include "core/frmWelcome.h"
#include "core/shared_state.h"
#include "drivers/jrc_common.h"
#include "serial/sim_backend.h"
#include "sim/ar7030_sim.h"
#include "sim/nrd_sim.h"
#include "sim/rx320_sim.h"
#include "sim/sim_device.h"

#include <QFile>
#include <QTemporaryDir>
#include <memory>

class Counting : public SimDevice {
public:
    explicit Counting(std::unique_ptr<SimDevice> target) : target_(std::move(target))
    {
        target_->transmit = [this](const QByteArray &b) {
            in += b.size();
            send(b);
        };
    }
    void receive(const QByteArray &b) override { target_->receive(b); }
    int baudRate() const override { return target_->baudRate(); }
    QString model() const override { return target_->model(); }
    qint64 in = 0;

private:
    std::unique_ptr<SimDevice> target_;
};

// A data directory whose ports file says "sim", the model's simulator behind a counting device,
// and the start window's Go: the model's panel open on a line paced at the set's byte rate.
struct PacedStation {
    QTemporaryDir dir;
    Counting *dev = nullptr;
    std::unique_ptr<frmWelcome> welcome;
    SimBackend *line = nullptr;

    explicit PacedStation(int type)
    {
        dirPath = dir.path() + "/";
        rxType = int16_t(type);
        fillFixedTables();
        computeFullDirTable();
        slotCommPort() = 1;
        remoteLock = remoteCommand = lockState = 0;
        write("comports.ini", "sim\r\n");
        // The RX-320's panel starts from its own settings file.
        write("rx320settings.ini", "7100.5\r\n10\r\n-150\r\n1\r\n400\r\n1\r\n40\r\n20\r\n");
        CommLine::setSimulatorFactory([this, type]() -> std::unique_ptr<SimDevice> {
            std::unique_ptr<SimDevice> sim;
            switch (type) {
            case rxAR7030: sim = std::make_unique<Ar7030Sim>(); break;
            case rxNRD535: sim = std::make_unique<Nrd535Sim>(); break;
            case rxNRD545: sim = std::make_unique<Nrd545Sim>(); break;
            default: sim = std::make_unique<Rx320Sim>(); break;
            }
            auto c = std::make_unique<Counting>(std::move(sim));
            dev = c.get();
            return c;
        });
        welcome = std::make_unique<frmWelcome>();
        isOpen(Win::frmWelcome) = true;
        welcome->imgGo_Click();
        line = qobject_cast<SimBackend *>(welcome->Comm1.backend());
        if (line)
            line->setPaced(true);
    }
    ~PacedStation()
    {
        welcome.reset();
        CommLine::setSimulatorFactory({});
    }
    bool ok() const { return line && dev; }

private:
    void write(const char *name, const QByteArray &bytes)
    {
        QFile f(dir.filePath(QLatin1String(name)));
        if (f.open(QIODevice::WriteOnly))
            f.write(bytes);
    }
};
