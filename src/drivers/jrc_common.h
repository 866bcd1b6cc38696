#pragma once
// What the two JRC receivers have in common: ASCII commands closed by CR, the remote frame
// ("H1" twice before a command, "H0" twice after it) and the ways of waiting for a reply.
// The receivers ignore commands in local mode, so a command either runs inside a frame or
// relies on the user's lock having put the set into remote mode.
#include "rx_driver.h"

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <cstdint>

// Process-wide remote state, shared by every JRC driver instance.
// remoteLock: the user's lock holds the set in remote mode between commands (0 or 1).
// remoteCommand: a framed command is in progress (0 or 1).
// lockState: the panel's view of the lock, read by other windows (0 or 1).
extern int16_t remoteLock;
extern int16_t remoteCommand;
extern int16_t lockState;

// Number text of the JRC commands.
namespace jrc {
// x with at least n digits, leading zeros ("000" form), rounded as the format patterns round.
QByteArray digits(double x, int n);
// The last character of the number's text: a code above 9 is cut to its last digit.
QByteArray lastChar(int v);
// "+" or "-" (0 counts as "+"), then n digits of the absolute value.
QByteArray signedDigits(int v, int n);
// The memory number of a read: the last three digits of n + 1000.
QByteArray cellOfRead(int n);
// A variant's own text, and its number ("000" form) as a variant argument is written.
QString variantText(const QVariant &v);
QByteArray variantDigits(const QVariant &v, int n);
// Characters pos..pos+len-1 of a reply or record, counted from 1; shorter where it ends.
QString mid(const QByteArray &b, int pos, int len = -1);
QString mid(const QString &s, int pos, int len = -1);
// The decimal value of characters of a reply (0 for text that is no number).
double valueAt(const QByteArray &b, int pos, int len = -1);
// The record of a vacant cell: "XXX", the three digits of the reply, then the fillers.
QString vacantRecord(const QString &number);
// A cell's frequency field must lie strictly between these (Hz) to be stored.
constexpr double kMemLowestHz = 9999;
constexpr double kMemHighestHz = 29999999;
} // namespace jrc

class JrcDriver : public RxDriver {
    Q_OBJECT
public:
    using RxDriver::RxDriver;

    // Enter remote mode: only when exactly one of remoteLock and remoteCommand is 1.
    void i_on();
    // Back to local mode: only when both flags are 0.
    void i_off();

    // The user's lock: 1 holds the set in remote mode, 0 releases it; other values change nothing.
    void Lockonoff(int16_t v);
    void setPowerOnOff(int16_t v);
    void setAttenuator(int16_t v);
    int16_t Attenuator();
    void setBandwidth(int16_t &v) override;
    void setMode(int16_t v) override;
    int16_t Mode() override;
    // Stores the current state into cell n.
    void Rx2Mem(int16_t n);
    void Timerrelaysonoff(int16_t v);
    // "HH:MM:SS" from the receiver's clock.
    QString RxClock();

    // The 13-character status text "X", attenuator, bandwidth, mode, eight digits of Hz, AGC.
    virtual QString RxStatus() = 0;
    virtual void setRxStatus(const QString &s) = 0;

    // The sets cannot report a firmware version.
    QString Firmware() override { return QString(); }

signals:
    void LockChanged(int v);
    void PoweronoffChanged(int v);
    void RttyonoffChanged(int v);
    void AttenuatorChanged(int v);
    void BandwidthcontrolChanged(int v);
    void RxStatusChanged(const QString &s);

protected:
    // The command and its CR, outside any frame.
    void send(const QByteArray &command);
    // Bytes as they stand inside the remote frame; empty bytes send only the frame.
    void framedOutput(const QByteArray &bytes);
    // The command and its CR inside the remote frame; an empty command sends only the frame.
    void framed(const QByteArray &command);

    enum class Wait { Blocking, LetEventsRun };
    // Waits until at least n bytes are waiting. Blocking waits on the line and nothing else
    // runs meanwhile; LetEventsRun lets pending events run between short waits on the line.
    // Neither has a time-out: a silent receiver keeps the caller here, until the line's waits
    // are cut.
    void waitForCount(int n, Wait how);
    // Empties the buffer, sends the query with CR, waits for n bytes and takes them all.
    QByteArray query(const QByteArray &q, int n, Wait how);
    // The same inside the remote frame.
    QByteArray framedQuery(const QByteArray &q, int n, Wait how);
    // Asks for memory cell n ("L" and the number twice) and collects the reply until it ends
    // in CR or reaches maxLen characters, or the line's waits are cut; the CR is taken off.
    QByteArray memoryReply(int16_t n, int maxLen);

private:
    void waitOnLine(int ms);
};
