#include "jrc_common.h"
#include "core/numtext.h"
#include "core/session_clock.h"
#include "serial/comm_line.h"

#include <QCoreApplication>
#include <QThread>
#include <cmath>
#include <cstdlib>

int16_t remoteLock = 0;
int16_t remoteCommand = 0;
int16_t lockState = 0;

namespace {
// The sets need time to change between local and remote mode.
constexpr int kRemoteSettleMs = 50;
// A read that lets events run looks at them this often while it waits on the line.
constexpr int kEventPollMs = 5;
// A blocking read waits on the line in slices of this length; nothing else runs meanwhile.
constexpr int kBlockSliceMs = 1000;
} // namespace

namespace jrc {

QByteArray digits(double x, int n)
{
    return numtext::format(x, QString(n, u'0')).toLatin1();
}

QByteArray lastChar(int v)
{
    return QByteArray::number(v).right(1);
}

QByteArray signedDigits(int v, int n)
{
    return QByteArray(v < 0 ? "-" : "+") + digits(std::abs(v), n);
}

QByteArray cellOfRead(int n)
{
    return QByteArray::number(n + 1000).right(3);
}

QString variantText(const QVariant &v)
{
    switch (v.typeId()) {
    case QMetaType::Double: return numtext::str(v.toDouble());
    case QMetaType::Float: return numtext::str(v.toFloat());
    case QMetaType::Bool: return v.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    default: return v.toString();
    }
}

QByteArray variantDigits(const QVariant &v, int n)
{
    if (v.typeId() == QMetaType::QString) {
        // Text that is a number is written as the number; other text stands as it is.
        bool ok = false;
        const double x = v.toString().trimmed().toDouble(&ok);
        return ok ? digits(x, n) : v.toString().toLatin1();
    }
    return digits(v.toDouble(), n);
}

QString mid(const QByteArray &b, int pos, int len)
{
    return mid(QString::fromLatin1(b), pos, len);
}

QString mid(const QString &s, int pos, int len)
{
    if (pos < 1 || pos > s.size())
        return QString();
    return s.mid(pos - 1, len);
}

double valueAt(const QByteArray &b, int pos, int len)
{
    return numtext::Val(mid(b, pos, len));
}

QString vacantRecord(const QString &number)
{
    return QStringLiteral("XXX") + number + QStringLiteral(" No data  @ @@ @ @ @@@ @@@ @ ");
}

} // namespace jrc

void JrcDriver::i_on()
{
    // With both flags set the set is in remote mode already.
    if ((remoteLock == 1) == (remoteCommand == 1))
        return;
    // Sent twice on purpose: the first one is not always taken.
    comm().Output("H1\r");
    delayMs(kRemoteSettleMs);
    comm().Output("H1\r");
    delayMs(kRemoteSettleMs);
}

void JrcDriver::i_off()
{
    if (remoteLock != 0 || remoteCommand != 0)
        return;
    delayMs(kRemoteSettleMs);
    comm().Output("H0\r");
    delayMs(kRemoteSettleMs);
    comm().Output("H0\r");
}

void JrcDriver::send(const QByteArray &command)
{
    comm().Output(command + '\r');
}

void JrcDriver::framedOutput(const QByteArray &bytes)
{
    remoteCommand = 1;
    i_on();
    if (!bytes.isEmpty())
        comm().Output(bytes);
    remoteCommand = 0;
    i_off();
}

void JrcDriver::framed(const QByteArray &command)
{
    framedOutput(command.isEmpty() ? QByteArray() : command + '\r');
}

void JrcDriver::waitOnLine(int ms)
{
    if (comm().PortOpen())
        comm().waitForBytes(ms);
    else
        QThread::msleep(ulong(ms)); // nothing can come on a closed line; still, do not spin
}

void JrcDriver::waitForCount(int n, Wait how)
{
    for (;;) {
        if (how == Wait::LetEventsRun)
            QCoreApplication::processEvents();
        // Cut waits (the device is gone, the window is closing) end the read with what came.
        if (comm().InBufferCount() >= n || comm().waitsCut())
            return;
        waitOnLine(how == Wait::LetEventsRun ? kEventPollMs : kBlockSliceMs);
    }
}

QByteArray JrcDriver::query(const QByteArray &q, int n, Wait how)
{
    comm().setInBufferCount(0);
    send(q);
    waitForCount(n, how);
    return comm().Input();
}

QByteArray JrcDriver::framedQuery(const QByteArray &q, int n, Wait how)
{
    remoteCommand = 1;
    i_on();
    const QByteArray r = query(q, n, how);
    remoteCommand = 0;
    i_off();
    return r;
}

QByteArray JrcDriver::memoryReply(int16_t n, int maxLen)
{
    const QByteArray nnn = jrc::cellOfRead(n);
    comm().setInBufferCount(0);
    send("L" + nnn + nnn);
    QByteArray reply;
    for (;;) {
        if (comm().InBufferCount() != 0)
            reply += comm().Input();
        if (reply.endsWith('\r') || reply.size() >= maxLen || comm().waitsCut())
            break;
        waitOnLine(kBlockSliceMs);
    }
    if (reply.endsWith('\r'))
        reply.chop(1);
    return reply;
}

void JrcDriver::Lockonoff(int16_t v)
{
    if (v == 0) {
        remoteLock = 0;
        i_off();
    } else if (v == 1) {
        remoteLock = 1;
        i_on();
    }
    emit LockChanged(v);
}

void JrcDriver::setPowerOnOff(int16_t v)
{
    framed("T" + jrc::digits(v, 1));
    emit PoweronoffChanged(v);
}

void JrcDriver::setAttenuator(int16_t v)
{
    framed("A" + jrc::lastChar(v));
    emit AttenuatorChanged(v);
}

int16_t JrcDriver::Attenuator()
{
    return numtext::cint(numtext::Val(jrc::mid(RxStatus(), 2, 1)));
}

void JrcDriver::setBandwidth(int16_t &v)
{
    framed("B" + jrc::lastChar(v));
    emit BandwidthChanged(v);
}

void JrcDriver::setMode(int16_t v)
{
    framed("D" + jrc::lastChar(v));
    emit ModeChanged(v);
}

int16_t JrcDriver::Mode()
{
    return numtext::cint(numtext::Val(jrc::mid(RxStatus(), 4, 1)));
}

void JrcDriver::Rx2Mem(int16_t n)
{
    framed("C" + jrc::digits(n, 3));
}

void JrcDriver::Timerrelaysonoff(int16_t v)
{
    framed("O" + jrc::digits(v, 1));
}

QString JrcDriver::RxClock()
{
    remoteCommand = 1;
    i_on();
    comm().setInBufferCount(0);
    send("R0");
    waitForCount(8, Wait::LetEventsRun);
    remoteCommand = 0;
    i_off();
    // Taken only after the frame is closed, with whatever came meanwhile.
    const QByteArray r = comm().Input();
    QString t = jrc::mid(r, 2, 2) + u':' + jrc::mid(r, 4, 2) + u':' + jrc::mid(r, 6, 2);
    if (t.endsWith(QStringLiteral("::")))
        t = t.left(5);
    return t;
}
