// What the drivers make of numbers in the receivers' replies: the NRD-545's AGC read.
#include "drivers/clsNRD545.h"
#include "serial/comm_line.h"
#include "serial/sim_backend.h"
#include "sim/nrd_sim.h"
#include "testmain.h"

#include <QTest>

namespace {
// A JRC set that answers every CR-ended command with one fixed reply.
class FixedJrc : public SimDevice {
public:
    explicit FixedJrc(QByteArray reply) : reply_(std::move(reply)) {}
    void receive(const QByteArray &b) override
    {
        if (b.endsWith('\r'))
            send(reply_);
    }
    int baudRate() const override { return 4800; }
    QString model() const override { return QStringLiteral("fixed-jrc"); }

private:
    QByteArray reply_;
};

struct Line {
    CommLine comm;
    Line(std::unique_ptr<SimDevice> device, const char *settings)
    {
        auto b = std::make_unique<SimBackend>(std::move(device));
        b->open(parseSettings(QLatin1String(settings)), nullptr);
        comm.openWith(std::move(b));
    }
};

} // namespace

class TestConversions : public QObject {
    Q_OBJECT
private slots:
    // The set answers the two-letter echo and three digits, ten times the code.
    void nrd545AgcRead_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<int>("code");
        QTest::newRow("fastest") << QByteArray("NN010\r") << 1;
        QTest::newRow("middle") << QByteArray("NN050\r") << 5;
        QTest::newRow("slowest") << QByteArray("NN090\r") << 9;
        QTest::newRow("half to even down") << QByteArray("NN045\r") << 4;
        QTest::newRow("half to even up") << QByteArray("NN055\r") << 6;
        QTest::newRow("off reads as 1") << QByteArray("NN000\r") << 1;
        QTest::newRow("above 9 reads as 9") << QByteArray("NN180\r") << 9;
    }
    void nrd545AgcRead()
    {
        QFETCH(QByteArray, reply);
        QFETCH(int, code);
        Line line(std::make_unique<FixedJrc>(reply), "4800,N,8,1");
        QCOMPARE(int(clsNRD545(line.comm).Agcspeed()), code);
    }

    void nrd545AgcThroughSimulator()
    {
        Line line(std::make_unique<Nrd545Sim>(), "4800,N,8,1");
        clsNRD545 drv(line.comm);
        drv.Lockonoff(1);
        for (int16_t code = 2; code <= 9; ++code) {
            drv.setAgcspeed(code);
            QCOMPARE(drv.Agcspeed(), code);
        }
    }
};

BRELVOX_TEST(TestConversions)
#include "tst_conversions.moc"
