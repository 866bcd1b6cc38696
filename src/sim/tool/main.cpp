// brelvox-sim <model> [--paced] [--trace]
// Serves a receiver simulator on a pseudo-terminal, so that any program (ours through
// QSerialPort, or another rig-control client) can talk to it as to a receiver on a serial port.
// The first line on stdout is the device to open; then one line per command understood.
#include "sim/simulators.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSocketNotifier>
#include <QStringList>
#include <QTimer>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <fcntl.h>
#include <memory>
#include <termios.h>
#include <unistd.h>

namespace {

int signalPipe[2] = {-1, -1};

void onSignal(int)
{
    const char c = 1;
    [[maybe_unused]] const ssize_t n = ::write(signalPipe[1], &c, 1);
}

speed_t speedFor(int baud)
{
    switch (baud) {
    case 1200: return B1200;
    case 2400: return B2400;
    case 4800: return B4800;
    case 19200: return B19200;
    default: return B9600;
    }
}

void printLine(const QByteArray &line)
{
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

QByteArray hex(const QByteArray &b) { return b.toHex(' '); }

// The far end of the pseudo-terminal: bytes the client writes go to the simulator, its
// replies go back, optionally at the pace a real line of the model's speed would allow.
class PtyLine {
public:
    PtyLine(std::unique_ptr<SimDevice> device, bool paced, bool trace)
        : device_(std::move(device)), paced_(paced), trace_(trace),
          byteUs_(10 * 1000000LL / std::max(1, device_->baudRate()))
    {
        clock_.start();
        device_->log = [](const QString &s) { printLine(s.toLocal8Bit()); };
        device_->transmit = [this](const QByteArray &b) { transmit(b); };
        timer_.setSingleShot(true);
        timer_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer_, &QTimer::timeout, [this] { sendDue(); });
    }

    ~PtyLine()
    {
        if (slave_ >= 0)
            ::close(slave_);
        if (master_ >= 0)
            ::close(master_);
    }

    // Opens the pair and returns the slave's path, or an empty string (reason in *why).
    QByteArray open(QString *why)
    {
        master_ = ::posix_openpt(O_RDWR | O_NOCTTY);
        if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0) {
            *why = QStringLiteral("cannot create a pseudo-terminal: %1").arg(QString::fromLocal8Bit(std::strerror(errno)));
            return {};
        }
        const char *name = ::ptsname(master_);
        if (!name) {
            *why = QStringLiteral("no name for the pseudo-terminal");
            return {};
        }
        const QByteArray path(name);
        // Held open for the tool's life: without it, reading the master fails with EIO
        // whenever no client has the device open.
        slave_ = ::open(path.constData(), O_RDWR | O_NOCTTY);
        if (slave_ < 0) {
            *why = QStringLiteral("cannot open %1: %2").arg(QString::fromLocal8Bit(path), QString::fromLocal8Bit(std::strerror(errno)));
            return {};
        }
        termios t{};
        ::tcgetattr(slave_, &t);
        ::cfmakeraw(&t);
        t.c_cflag &= ~tcflag_t(PARENB | CSTOPB | CSIZE | CRTSCTS);
        t.c_cflag |= CS8 | CLOCAL | CREAD;
        t.c_cc[VMIN] = 1;
        t.c_cc[VTIME] = 0;
        ::cfsetispeed(&t, speedFor(device_->baudRate()));
        ::cfsetospeed(&t, speedFor(device_->baudRate()));
        ::tcsetattr(slave_, TCSANOW, &t);

        ::fcntl(master_, F_SETFL, ::fcntl(master_, F_GETFL) | O_NONBLOCK);
        notifier_ = std::make_unique<QSocketNotifier>(master_, QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] { readAll(); });
        return path;
    }

private:
    qint64 nowUs() const { return clock_.nsecsElapsed() / 1000; }

    void readAll()
    {
        char buf[512];
        for (;;) {
            const ssize_t n = ::read(master_, buf, sizeof buf);
            if (n > 0) {
                const QByteArray chunk(buf, n);
                if (trace_)
                    std::fprintf(stderr, "< %s\n", hex(chunk).constData());
                deliver(chunk);
                continue;
            }
            if (n < 0 && errno == EINTR)
                continue;
            if (n < 0 && errno != EAGAIN && errno != EWOULDBLOCK) {
                // Should not happen while we hold the slave; do not spin on it.
                notifier_->setEnabled(false);
                QTimer::singleShot(100, [this] { notifier_->setEnabled(true); });
            }
            return;
        }
    }

    void deliver(const QByteArray &chunk)
    {
        if (!paced_) {
            device_->receive(chunk);
            return;
        }
        // On a real line each byte is complete only one byte time after the one before it,
        // so a reply cannot start before the last byte of its command has arrived.
        for (char c : chunk) {
            inFreeUs_ = std::max(inFreeUs_, nowUs()) + byteUs_;
            device_->receive(QByteArray(1, c));
        }
    }

    void transmit(const QByteArray &b)
    {
        if (!paced_) {
            writeOut(b);
            return;
        }
        qint64 t = std::max(inFreeUs_, outFreeUs_);
        for (char c : b) {
            t += byteUs_;
            out_.push_back({t, c});
        }
        outFreeUs_ = t;
        arm();
    }

    void sendDue()
    {
        const qint64 now = nowUs();
        QByteArray due;
        while (!out_.empty() && out_.front().dueUs <= now) {
            due += out_.front().byte;
            out_.pop_front();
        }
        if (!due.isEmpty())
            writeOut(due);
        arm();
    }

    void arm()
    {
        if (out_.empty())
            return;
        const qint64 waitUs = out_.front().dueUs - nowUs();
        const int ms = int(std::max<qint64>(0, (waitUs + 999) / 1000));
        if (!timer_.isActive() || timer_.remainingTime() > ms)
            timer_.start(ms);
    }

    void writeOut(const QByteArray &b)
    {
        if (trace_)
            std::fprintf(stderr, "> %s\n", hex(b).constData());
        qsizetype done = 0;
        while (done < b.size()) {
            const ssize_t n = ::write(master_, b.constData() + done, size_t(b.size() - done));
            if (n < 0 && errno == EINTR)
                continue;
            if (n <= 0)
                return; // the line is full and nobody reads it: the bytes are lost, as on a wire
            done += n;
        }
    }

    struct OutByte {
        qint64 dueUs;
        char byte;
    };

    std::unique_ptr<SimDevice> device_;
    bool paced_;
    bool trace_;
    qint64 byteUs_;
    int master_ = -1;
    int slave_ = -1;
    std::unique_ptr<QSocketNotifier> notifier_;
    QElapsedTimer clock_;
    QTimer timer_;
    std::deque<OutByte> out_;
    qint64 inFreeUs_ = 0;
    qint64 outFreeUs_ = 0;
};

int usage(const char *why)
{
    std::fprintf(stderr, "brelvox-sim: %s\nusage: brelvox-sim <model> [--paced] [--trace]\n"
                         "  model    %s\n"
                         "  --paced  send replies at the model's real line speed\n"
                         "  --trace  show every byte received (<) and sent (>) on stderr\n",
                 why, qPrintable(simulatorNames().join(QStringLiteral(", "))));
    return 2;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QString model;
    bool paced = false, trace = false;
    const QStringList args = app.arguments().mid(1);
    for (const QString &a : args) {
        if (a == QLatin1String("--paced"))
            paced = true;
        else if (a == QLatin1String("--trace"))
            trace = true;
        else if (a.startsWith(QLatin1Char('-')) || !model.isEmpty())
            return usage(qPrintable(QStringLiteral("unexpected argument %1").arg(a)));
        else
            model = a;
    }
    if (model.isEmpty())
        return usage("no model given");
    std::unique_ptr<SimDevice> device = makeSimulatorByName(model.toLower());
    if (!device)
        return usage(qPrintable(QStringLiteral("no simulator for model \"%1\"").arg(model)));

    if (::pipe(signalPipe) != 0) {
        std::perror("brelvox-sim: pipe");
        return 1;
    }
    struct sigaction sa {};
    sa.sa_handler = onSignal;
    sigemptyset(&sa.sa_mask);
    sa.sa_flags = SA_RESTART;
    ::sigaction(SIGTERM, &sa, nullptr);
    ::sigaction(SIGINT, &sa, nullptr);
    QSocketNotifier quitNotifier(signalPipe[0], QSocketNotifier::Read);
    QObject::connect(&quitNotifier, &QSocketNotifier::activated, &app, &QCoreApplication::quit);

    PtyLine line(std::move(device), paced, trace);
    QString why;
    const QByteArray path = line.open(&why);
    if (path.isEmpty()) {
        std::fprintf(stderr, "brelvox-sim: %s\n", qPrintable(why));
        return 1;
    }
    printLine(path);
    return app.exec();
}
