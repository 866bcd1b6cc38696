#include "testmain.h"
#include "testutil.h"
#include "ui/printing_qt.h"

#include <QApplication>
#include <QDialog>
#include <QFileInfo>
#include <QFontMetrics>
#include <QPrinter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {
int pdfPages(const QByteArray &pdf)
{
    static const QRegularExpression page(QStringLiteral("/Type\\s*/Page(?!s)"));
    return int(QString::fromLatin1(pdf).count(page));
}

// An A4 sheet with the print-outs' margins.
struct A4Sheet {
    A4Sheet()
    {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setPageSize(QPageSize(QPageSize::A4));
        printer.setPageMargins(QMarginsF(ui::kPrintSideMarginMm, ui::kPrintTopBottomMarginMm, ui::kPrintSideMarginMm,
                                         ui::kPrintTopBottomMarginMm),
                               QPageLayout::Millimeter);
    }
    QPrinter printer{QPrinter::HighResolution};
};

// Lines that fit one page, worked out from the printer's own metrics.
int linesPerPage(const ui::PrintJob &job)
{
    A4Sheet a4;
    return a4.printer.height() / QFontMetrics(ui::printFont(job), &a4.printer).lineSpacing();
}

QStringList numberedLines(int n)
{
    QStringList l;
    for (int i = 0; i < n; ++i)
        l << QStringLiteral("     %1 %2 Station Ünterwald").arg(i, 3, 10, QChar(u'0')).arg(5950 + i * 5);
    return l;
}
} // namespace

class TestPrinting : public QObject {
    Q_OBJECT
private slots:
    // Columns stay columns: every face asked for prints at fixed pitch.
    void fixedPitch_data()
    {
        QTest::addColumn<QString>("family");
        QTest::newRow("asked for") << "Courier New";
        QTest::newRow("not installed") << "Nowhere Face Qx";
        QTest::newRow("proportional") << "DejaVu Sans";
    }
    void fixedPitch()
    {
        QFETCH(QString, family);
        ui::PrintJob job;
        job.fontFamily = family;
        const QFont f = ui::printFont(job);
        QCOMPARE(f.pointSize(), 10);
        const QFontMetrics fm(f);
        QCOMPARE(fm.horizontalAdvance(QStringLiteral("iiiiiiii")), fm.horizontalAdvance(QStringLiteral("MMMMMMMM")));
    }

    // On A4, a list row of 94 columns fits across and some 60 lines of 10 pt fit down.
    void sheet()
    {
        A4Sheet a4;
        const QFontMetrics fm(ui::printFont(ui::PrintJob()), &a4.printer);
        const QRect paper = a4.printer.pageLayout().fullRectPixels(a4.printer.resolution());
        const QRect area = a4.printer.pageLayout().paintRectPixels(a4.printer.resolution());
        QVERIFY(area.left() + fm.horizontalAdvance(QString(94, u'M')) <= paper.width());
        const int perPage = linesPerPage(ui::PrintJob());
        QVERIFY2(perPage > 55 && perPage < 85, qPrintable(QString::number(perPage)));
    }

    // As many pages as the lines need: a new page begins exactly when the next line would not fit.
    void pages_data()
    {
        QTest::addColumn<int>("fullPages");
        QTest::addColumn<int>("extraLines");
        QTest::newRow("empty job") << 0 << 0;
        QTest::newRow("one line") << 0 << 1;
        QTest::newRow("page full") << 1 << 0;
        QTest::newRow("one line over") << 1 << 1;
        QTest::newRow("three pages full") << 3 << 0;
        QTest::newRow("a thousand lines") << 0 << 1000;
    }
    void pages()
    {
        QFETCH(int, fullPages);
        QFETCH(int, extraLines);
        TestEnv env;
        QTemporaryDir dir;
        env.printer->path = dir.filePath(QStringLiteral("p.pdf"));
        ui::PrintJob job;
        job.title = QStringLiteral("Memories");
        const int perPage = linesPerPage(job);
        job.lines = numberedLines(fullPages * perPage + extraLines);
        QVERIFY(ui::print(job));
        QCOMPARE(pdfPages(readFile(env.printer->path)), std::max(1, int((job.lines.size() + perPage - 1) / perPage)));
        QCOMPARE(env.printer->printed.size(), 1);
        QCOMPARE(env.printer->printed[0].lines, job.lines);
        QCOMPARE(env.printer->printed[0].title, job.title);
    }

    // Cancel, or no printer at all: nothing printed, and the answer is false.
    void cancelPrintsNothing()
    {
        TestEnv env;
        QTemporaryDir dir;
        env.printer->path = dir.filePath(QStringLiteral("c.pdf"));
        env.printer->cancel = true;
        ui::PrintJob job;
        job.lines = numberedLines(3);
        QVERIFY(!ui::print(job));
        QVERIFY(!QFileInfo::exists(env.printer->path));
        QVERIFY(env.printer->printed.isEmpty());
        ui::installPrinter(nullptr);
        QVERIFY(!ui::print(job));
    }

    // Cancel in the print dialog.
    void systemPrinterCancelled()
    {
        bool asked = false;
        QObject scope; // the answer goes with the test
        QTimer::singleShot(0, &scope, [&] {
            if (auto *d = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
                asked = true;
                d->reject();
            }
        });
        QVERIFY(!ui::SystemPrinter().print({QStringLiteral("t"), QStringLiteral("Courier New"), 10, numberedLines(3)}));
        QVERIFY(asked);
    }
};

BRELVOX_TEST(TestPrinting)
#include "tst_printing.moc"
