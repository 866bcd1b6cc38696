#include "testmain.h"
#include "ui/widgets/chart_canvas.h"

#include <QtTest>

class TestChartCanvas : public QObject {
    Q_OBJECT
private slots:
    // Lines hold both ends, boxes both corners; a line far outside costs nothing and draws its
    // visible part; what is drawn survives a repaint of the widget.
    void drawing()
    {
        ChartCanvas c(100, 60);
        c.setBackColor(QColor(255, 255, 192));
        c.cls();
        const QColor black = ChartCanvas::standardColor(0), red = ChartCanvas::standardColor(12);
        c.line(10, 50, 10, 20, black);
        c.line(20, 5, 30, 10, red);
        c.box(40, 40, 42, 44, ChartCanvas::standardColor(10));
        c.box(-50, 0, 5711, 2, ChartCanvas::standardColor(9));
        c.line(50, 30, 50, -2000000000, black);
        QCOMPARE(c.pixel(10, 50), black);
        QCOMPARE(c.pixel(10, 20), black);
        QCOMPARE(c.pixel(10, 19), QColor(255, 255, 192));
        QCOMPARE(c.pixel(20, 5), red);
        QCOMPARE(c.pixel(30, 10), red);
        QCOMPARE(c.pixel(42, 44), QColor(0, 255, 0));
        QCOMPARE(c.pixel(43, 44), QColor(255, 255, 192));
        QCOMPARE(c.pixel(99, 2), QColor(0, 0, 255));
        QCOMPARE(c.pixel(50, 3), black);
        QCOMPARE(ChartCanvas::standardColor(13), QColor(255, 0, 255));
        QCOMPARE(ChartCanvas::standardColor(7), QColor(192, 192, 192));
        QCOMPARE(c.grab().toImage().pixelColor(10, 20), black);
    }
};

BRELVOX_TEST(TestChartCanvas)
#include "tst_chart_canvas.moc"
