#include "images.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

namespace images {
namespace {
constexpr int kSize = 64;

QPixmap disc(const QColor &c, const std::function<void(QPainter &)> &draw)
{
    QPixmap pm(kSize, kSize);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    QRadialGradient g(QPointF(kSize * 0.35, kSize * 0.3), kSize * 0.7);
    g.setColorAt(0, c.lighter(150));
    g.setColorAt(1, c.darker(130));
    p.setBrush(g);
    p.setPen(QPen(c.darker(170), 2));
    p.drawEllipse(QRectF(3, 3, kSize - 6, kSize - 6));
    draw(p);
    return pm;
}
} // namespace

QPixmap go()
{
    return disc(QColor(40, 160, 60), [](QPainter &p) {
        QPainterPath tri;
        tri.moveTo(24, 17);
        tri.lineTo(48, 32);
        tri.lineTo(24, 47);
        tri.closeSubpath();
        p.setPen(Qt::NoPen);
        p.setBrush(Qt::white);
        p.drawPath(tri);
    });
}

QPixmap setup()
{
    return disc(QColor(120, 120, 130), [](QPainter &p) {
        p.setPen(QPen(Qt::white, 7, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(22, 42), QPointF(38, 26));
        p.setPen(QPen(Qt::white, 5));
        p.setBrush(Qt::NoBrush);
        p.drawArc(QRectF(33, 15, 16, 16), 120 * 16, 260 * 16);
        p.setBrush(Qt::white);
        p.setPen(Qt::NoPen);
        p.drawEllipse(QRectF(17, 37, 10, 10));
    });
}

QPixmap about()
{
    return disc(QColor(40, 90, 190), [](QPainter &p) {
        p.setPen(Qt::NoPen);
        p.setBrush(Qt::white);
        p.drawEllipse(QRectF(28, 14, 8, 8));
        p.drawRoundedRect(QRectF(28, 26, 8, 24), 2, 2);
    });
}

QPixmap exitDoor()
{
    return disc(QColor(190, 40, 40), [](QPainter &p) {
        p.setPen(QPen(Qt::white, 7, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(22, 22), QPointF(42, 42));
        p.drawLine(QPointF(42, 22), QPointF(22, 42));
    });
}

QPixmap antenna()
{
    QPixmap pm(80, 96);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(60, 60, 70), 3));
    p.drawLine(40, 30, 40, 92);
    p.drawLine(40, 92, 24, 92);
    p.drawLine(40, 92, 56, 92);
    p.drawLine(40, 50, 28, 92);
    p.drawLine(40, 50, 52, 92);
    p.setPen(QPen(QColor(40, 110, 200), 2));
    for (int r = 10; r <= 30; r += 10) {
        p.drawArc(QRectF(40 - r, 30 - r, 2 * r, 2 * r), 20 * 16, 50 * 16);
        p.drawArc(QRectF(40 - r, 30 - r, 2 * r, 2 * r), 110 * 16, 50 * 16);
    }
    p.setBrush(QColor(200, 40, 40));
    p.setPen(Qt::NoPen);
    p.drawEllipse(QPointF(40, 30), 4, 4);
    return pm;
}

QPixmap receiver()
{
    QPixmap pm(120, 70);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient g(0, 0, 0, 70);
    g.setColorAt(0, QColor(90, 90, 100));
    g.setColorAt(1, QColor(40, 40, 48));
    p.setBrush(g);
    p.setPen(QPen(Qt::black, 1));
    p.drawRoundedRect(QRectF(2, 6, 116, 58), 5, 5);
    p.setBrush(QColor(20, 30, 20));
    p.drawRect(QRectF(10, 14, 62, 20));
    p.setPen(QColor(120, 255, 140));
    QFont f(QStringLiteral("Monospace"));
    f.setStyleHint(QFont::TypeWriter);
    f.setPixelSize(13);
    p.setFont(f);
    p.drawText(QRectF(10, 14, 62, 20), Qt::AlignCenter, QStringLiteral("9410.00"));
    p.setBrush(QColor(170, 170, 180));
    p.setPen(QPen(Qt::black, 1));
    p.drawEllipse(QPointF(95, 35), 16, 16);
    p.drawLine(QPointF(95, 35), QPointF(103, 24));
    for (int i = 0; i < 5; ++i)
        p.drawRect(QRectF(10 + i * 13, 44, 9, 9));
    return pm;
}
} // namespace images
