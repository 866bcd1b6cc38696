#include "testmain.h"

#include <QApplication>
#include <QTest>
#include <memory>

namespace testreg {
struct Entry { const char *name; Factory f; };
static std::vector<Entry> &entries()
{
    static std::vector<Entry> e;
    return e;
}
int add(const char *name, Factory f)
{
    entries().push_back({name, std::move(f)});
    return int(entries().size());
}
} // namespace testreg

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    // "-only ClassName" runs one class; other arguments go to Qt Test.
    QStringList args = app.arguments();
    QString only;
    int i = int(args.indexOf(QStringLiteral("-only")));
    if (i > 0 && i + 1 < args.size()) {
        only = args[i + 1];
        args.remove(i, 2);
    }
    int failed = 0, run = 0;
    for (auto &e : testreg::entries()) {
        if (!only.isEmpty() && only != QLatin1String(e.name))
            continue;
        std::unique_ptr<QObject> t(e.f());
        failed += QTest::qExec(t.get(), args) != 0 ? 1 : 0;
        ++run;
    }
    return failed == 0 && run > 0 ? 0 : 1;
}
