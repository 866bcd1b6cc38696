#include "rx320_sim.h"

#include "ui/facades.h"

#include <QStringList>
#include <algorithm>
#include <array>
#include <cmath>

namespace {
constexpr char kCR = '\r';

constexpr std::array<int, 34> kFilterWidthHz = {
    6000, 5700, 5400, 5100, 4800, 4500, 4200, 3900, 3600, 3300, 3000, 2850,
    2700, 2550, 2400, 2250, 2100, 1950, 1800, 1650, 1500, 1350, 1200, 1050,
    900,  750,  675,  600,  525,  450,  375,  330,  300,  8000};

// Operand bytes that follow each command letter before its CR; -1 for a byte that starts no command.
int operandCount(char c)
{
    switch (c) {
    case 'N': return 6;
    case 'W': case 'M': case 'G': return 1;
    case 'V': case 'A': case 'C': return 2;
    case 'X': case '?': return 0;
    default: return -1;
    }
}

int u8(const QByteArray &b, int i) { return static_cast<unsigned char>(b.at(i)); }

// The digit operand of M and G, or -1.
int digit(const QByteArray &op)
{
    const char c = op.at(0);
    return c >= '0' && c <= '9' ? c - '0' : -1;
}
} // namespace

Rx320Sim::Rx320Sim(SimBand band) : band_(std::move(band)) {}

int Rx320Sim::filterWidthHz(int index)
{
    return index >= 0 && index < int(kFilterWidthHz.size()) ? kFilterWidthHz[size_t(index)] : 0;
}

QString Rx320Sim::modeName(int mode)
{
    static const QStringList names{QStringLiteral("AM"), QStringLiteral("USB"), QStringLiteral("LSB"),
                                   QStringLiteral("CW")};
    return mode >= 0 && mode < names.size() ? names[mode] : QStringLiteral("?");
}

double Rx320Sim::bfoHz() const { return bfo_ / 2.73 - 8000.0; }

double Rx320Sim::tunedHz() const
{
    // The synthesiser's pass band centre sits 1250 Hz above the coarse+fine sum.
    const double centre = (coarse_ - 18000) * 2500.0 + fine_ / 5.46 + 1250.0;
    // In the side bands the BFO places the carrier beside the pass band: its word holds the whole
    // offset (half the filter width, 200 Hz and any pass band shift). AM does not use the BFO,
    // and in CW it sets the pitch, so there the carrier is the centre.
    switch (mode_) {
    case 1: return centre - bfoHz();
    case 2: return centre + bfoHz();
    default: return centre;
    }
}

int Rx320Sim::smeterValue() const
{
    const double s = band_.sUnits(tunedHz() / 1000.0, ui::now().toUTC(), filterWidthHz() / 1000.0);
    // The reading 1.4 * ln(value) gives S units back.
    const double v = std::exp(s / 1.4);
    return int(std::clamp(std::lround(v), 1L, long(kMaxSmeter)));
}

void Rx320Sim::receive(const QByteArray &bytes)
{
    pending_ += bytes;
    for (;;) {
        if (skipping_) {
            const qsizetype cr = pending_.indexOf(kCR);
            if (cr < 0) {
                pending_.clear();
                return;
            }
            pending_.remove(0, cr + 1);
            skipping_ = false;
        }
        if (pending_.isEmpty())
            return;
        const char command = pending_.at(0);
        const int n = operandCount(command);
        if (n < 0) {
            // A stray CR ends nothing; any other unknown byte starts a command we skip whole.
            pending_.remove(0, 1);
            skipping_ = command != kCR;
            continue;
        }
        if (pending_.size() < n + 2)
            return;
        if (pending_.at(n + 1) != kCR) {
            // Not a command after all: the first CR after the letter most likely ended the
            // broken one, since a short command is the usual way framing goes wrong.
            pending_.remove(0, 1);
            skipping_ = true;
            continue;
        }
        const QByteArray operands = pending_.mid(1, n);
        pending_.remove(0, n + 2);
        execute(command, operands);
    }
}

void Rx320Sim::execute(char command, const QByteArray &op)
{
    switch (command) {
    case 'N':
        tune(op);
        break;
    case 'M': {
        const int m = digit(op);
        if (m < 0 || m > 3)
            return;
        mode_ = m;
        // Where the carrier now lies, since a client may tune before it sets the mode.
        note(QStringLiteral("mode %1 at %2 kHz").arg(modeName(m)).arg(tunedHz() / 1000.0, 0, 'f', 3));
        break;
    }
    case 'W': {
        const int w = u8(op, 0);
        if (w >= int(kFilterWidthHz.size()))
            return;
        filter_ = w;
        note(QStringLiteral("filter %1 (%2 Hz)").arg(w).arg(filterWidthHz(w)));
        break;
    }
    case 'G': {
        static const char *const speeds[] = {"slow", "medium", "fast"};
        const int g = digit(op);
        if (g < 1 || g > 3)
            return;
        agc_ = g;
        note(QStringLiteral("agc %1").arg(QLatin1String(speeds[g - 1])));
        break;
    }
    case 'V':
    case 'A': {
        // The first operand byte is not used by the set; the second is the attenuation.
        const int level = u8(op, 1);
        if (level > 63)
            return;
        (command == 'V' ? speaker_ : line_) = level;
        note(QStringLiteral("%1 %2").arg(command == 'V' ? QStringLiteral("speaker") : QStringLiteral("line")).arg(level));
        break;
    }
    case 'C':
        // Framed and accepted, but nothing of it can be heard in a simulation.
        break;
    case 'X': {
        const int v = smeterValue();
        QByteArray reply;
        reply.append('X').append(char(v >> 8)).append(char(v & 0xFF)).append(kCR);
        note(QStringLiteral("smeter %1").arg(v));
        send(reply);
        break;
    }
    case '?':
        note(QStringLiteral("version"));
        send(QByteArray(kVersionText) + kCR);
        break;
    default:
        break;
    }
}

void Rx320Sim::tune(const QByteArray &op)
{
    coarse_ = u8(op, 0) * 256 + u8(op, 1);
    fine_ = u8(op, 2) * 256 + u8(op, 3);
    bfo_ = u8(op, 4) * 256 + u8(op, 5);
    note(QStringLiteral("tune %1 kHz %2 filter %3 Hz")
             .arg(tunedHz() / 1000.0, 0, 'f', 3)
             .arg(modeName(mode_))
             .arg(filterWidthHz()));
}
