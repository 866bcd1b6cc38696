#include "simulators.h"

#include "ar7030_sim.h"
#include "nrd_sim.h"
#include "rx320_sim.h"

std::unique_ptr<SimDevice> makeSimulator(int rxType)
{
    switch (rxType) {
    case 1: return std::make_unique<Ar7030Sim>();
    case 2: return std::make_unique<Nrd535Sim>();
    case 3: return std::make_unique<Rx320Sim>();
    case 4: return std::make_unique<Nrd545Sim>();
    default:
        return nullptr;
    }
}

namespace {
struct NamedSimulator {
    const char *name;
    std::unique_ptr<SimDevice> (*make)();
};

template <class Sim>
std::unique_ptr<SimDevice> make()
{
    return std::make_unique<Sim>();
}

const NamedSimulator kNamedSimulators[] = {
    {"ar7030", make<Ar7030Sim>},
    {"rx320", make<Rx320Sim>},
    {"nrd535", make<Nrd535Sim>},
    {"nrd545", make<Nrd545Sim>},
};
} // namespace

std::unique_ptr<SimDevice> makeSimulatorByName(const QString &name)
{
    for (const auto &s : kNamedSimulators)
        if (name == QLatin1String(s.name))
            return s.make();
    return nullptr;
}

QStringList simulatorNames()
{
    QStringList names;
    for (const auto &s : kNamedSimulators)
        names << QLatin1String(s.name);
    return names;
}
