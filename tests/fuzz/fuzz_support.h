#pragma once
// What every fuzz target shares: the application object, a reader over the fuzzer's bytes, a
// serial line whose far side answers from those bytes, and a scratch data directory.
#include "core/runtime_error.h"
#include "serial/comm_backend.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace fuzz {

// Creates the one QCoreApplication (timers and event loops need it) and resets the shared
// block; call at the start of every input.
void begin();

// Runs one input's work. A RuntimeError is the program's own fatal path: a normal outcome.
// Everything else (another exception, a crash, a sanitizer report) stays a finding.
int run(const std::function<void()> &work);

// Takes the fuzzer's bytes piece by piece; an exhausted input yields zeros and empty pieces.
class Input {
public:
    Input(const uint8_t *data, size_t size) : data_(data), size_(size) {}
    bool atEnd() const { return pos_ >= size_; }
    uint8_t byte() { return atEnd() ? 0 : data_[pos_++]; }
    // A piece of up to max bytes: one length byte, then that many bytes.
    QByteArray piece(int max = 255);
    QByteArray rest();
    // The rest, cut at each 0x00 byte (several texts from one input).
    QStringList restAsTexts();

private:
    const uint8_t *data_;
    size_t size_;
    size_t pos_ = 0;
};

// The receiver's side of the line, played by the fuzzer: every write the driver makes is
// answered with the next piece of the input. Once the input is exhausted, every wait is answered
// with carriage returns, so that reads without a time-out still come to an end. A wait with
// nothing pending takes the next piece: bytes that come late.
class ReplyBackend : public CommBackend {
public:
    explicit ReplyBackend(Input &in) : in_(in) {}
    bool open(const LineSettings &, QString *) override { return true; }
    void close() override {}
    void write(const QByteArray &bytes) override;
    void collect(QByteArray &into) override;
    bool waitForBytes(int ms) override;
    QString deviceName() const override { return QStringLiteral("fuzz"); }
    QByteArray written;

private:
    Input &in_;
    QByteArray pending_;
};

// Reads of a driver chosen by the input, one byte each, each answered from the input; at most
// a dozen an input, so that one input stays quick.
void runReads(Input &in, const std::vector<std::function<void()>> &reads);

// A fresh empty directory for readers that take a path; its name ends in "/", as dirPath does.
QString scratchDir();
// Writes bytes to the scratch directory under name and returns the directory.
QString writeScratch(const QString &name, const QByteArray &bytes);

} // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
