#include "testmain.h"
#include "ui/widgets/text_grid.h"

#include <QTest>

// A grid model whose first rows come from a source: the rows seen after each change, by their
// first column, the source's rows being "s<n>".
class TestTextGrid : public QObject {
    Q_OBJECT
private slots:
    void sourceRows_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QString>("rows");
        QTest::newRow("as given") << "" << "s0 s1 s2";
        QTest::newRow("appended after them") << "append" << "s0 s1 s2 a";
        QTest::newRow("inserted among them") << "insert1" << "s0 a s1 s2";
        QTest::newRow("one replaced") << "replace2" << "s0 s1 a";
        QTest::newRow("a cell set") << "set1" << "s0 a s2";
        QTest::newRow("cleared") << "clear" << "";
    }
    void sourceRows()
    {
        QFETCH(QString, change);
        TextGridModel m(2);
        int made = 0;
        m.assignSource(3, [&made](int r) { ++made; return QStringList{QStringLiteral("s%1").arg(r), QStringLiteral("x")}; });
        QCOMPARE(made, 0);
        if (change == u"append")
            m.append({"a"});
        else if (change == u"insert1")
            m.insert(1, {"a"});
        else if (change == u"replace2")
            m.replace(2, {"a"});
        else if (change == u"set1")
            m.setText(1, 0, "a");
        else if (change == u"clear")
            m.clear();
        QStringList seen;
        for (int r = 0; r < m.rowCount(); ++r)
            seen << m.text(r, 0);
        QTEST(seen.join(u' ').trimmed(), "rows");
        QCOMPARE(m.text(0, 1), change == u"clear" ? QString() : QStringLiteral("x"));
    }
};

BRELVOX_TEST(TestTextGrid)
#include "tst_text_grid.moc"
