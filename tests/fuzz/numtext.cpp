// Number text: the lenient reader, the format patterns, the whole-number conversions.
// The input is up to three texts cut at 0x00: a number, a pattern, a second number.
#include "fuzz_support.h"
#include "core/numtext.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    const QStringList t = in.restAsTexts();
    auto text = [&](int i) { return i < t.size() ? t[i] : QString(); };
    auto guarded = [](const std::function<void()> &f) { fuzz::run(f); };
    const double x = numtext::valc(text(0));
    const double y = numtext::Val(text(2));
    numtext::str(x);
    numtext::str(float(y));
    numtext::floorInt(x);
    numtext::roundHalfEven(x);
    numtext::roundHalfAway(x);
    guarded([&] { numtext::format(x, text(1)); });
    guarded([&] { numtext::format(y, text(1)); });
    guarded([&] { numtext::cint(x); });
    guarded([&] { numtext::clng(x); });
    guarded([&] { numtext::clng(y); });
    return 0;
}
