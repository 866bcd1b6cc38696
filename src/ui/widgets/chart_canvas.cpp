#include "chart_canvas.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

ChartCanvas::ChartCanvas(int width, int height, QWidget *parent)
    : QWidget(parent), image_(width, height, QImage::Format_RGB32), back_(palette().color(QPalette::Window))
{
    setObjectName(QStringLiteral("chartCanvas"));
    setFixedSize(width, height);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    cls();
}

QColor ChartCanvas::standardColor(int n)
{
    static const std::array<QRgb, 16> table = {
        qRgb(0, 0, 0),       qRgb(0, 0, 128),     qRgb(0, 128, 0),   qRgb(0, 128, 128),
        qRgb(128, 0, 0),     qRgb(128, 0, 128),   qRgb(128, 128, 0), qRgb(192, 192, 192),
        qRgb(128, 128, 128), qRgb(0, 0, 255),     qRgb(0, 255, 0),   qRgb(0, 255, 255),
        qRgb(255, 0, 0),     qRgb(255, 0, 255),   qRgb(255, 255, 0), qRgb(255, 255, 255)};
    return QColor(table[size_t(n & 15)]);
}

void ChartCanvas::cls()
{
    image_.fill(back_);
    update();
}

void ChartCanvas::plot(int x, int y, QRgb c)
{
    if (x >= 0 && y >= 0 && x < image_.width() && y < image_.height())
        reinterpret_cast<QRgb *>(image_.scanLine(y))[x] = c;
}

void ChartCanvas::line(int x1, int y1, int x2, int y2, const QColor &c)
{
    // A line reaching far outside is cut to a margin round the image first, so that its cost
    // stays that of the visible part.
    const QRect reach = image_.rect().adjusted(-1024, -1024, 1024, 1024);
    if (!reach.contains(x1, y1) || !reach.contains(x2, y2)) {
        const double ax = x1, ay = y1, bx = x2, by = y2;
        double t0 = 0, t1 = 1;
        const double p[4] = {-(bx - ax), bx - ax, -(by - ay), by - ay};
        const double q[4] = {ax - reach.left(), reach.right() - ax, ay - reach.top(), reach.bottom() - ay};
        for (int i = 0; i < 4; ++i) {
            if (p[i] == 0) {
                if (q[i] < 0)
                    return;
                continue;
            }
            const double t = q[i] / p[i];
            if (p[i] < 0)
                t0 = std::max(t0, t);
            else
                t1 = std::min(t1, t);
        }
        if (t0 > t1)
            return;
        x1 = int(std::lround(ax + t0 * (bx - ax)));
        y1 = int(std::lround(ay + t0 * (by - ay)));
        x2 = int(std::lround(ax + t1 * (bx - ax)));
        y2 = int(std::lround(ay + t1 * (by - ay)));
    }
    const QRgb rgb = c.rgb();
    const int dx = std::abs(x2 - x1), dy = -std::abs(y2 - y1);
    const int sx = x1 < x2 ? 1 : -1, sy = y1 < y2 ? 1 : -1;
    int err = dx + dy;
    for (;;) {
        plot(x1, y1, rgb);
        if (x1 == x2 && y1 == y2)
            break;
        const int e2 = 2 * err;
        if (e2 >= dy) {
            err += dy;
            x1 += sx;
        }
        if (e2 <= dx) {
            err += dx;
            y1 += sy;
        }
    }
    update();
}

void ChartCanvas::box(int x1, int y1, int x2, int y2, const QColor &c)
{
    const QRect r = QRect(QPoint(std::min(x1, x2), std::min(y1, y2)), QPoint(std::max(x1, x2), std::max(y1, y2)))
                        .intersected(image_.rect());
    if (r.isEmpty())
        return;
    QPainter p(&image_);
    p.fillRect(r, c);
    update(r);
}

void ChartCanvas::text(int x, int y, const QString &s, const QColor &c)
{
    QPainter p(&image_);
    p.setFont(font());
    p.setPen(c);
    p.drawText(QPoint(x, y + p.fontMetrics().ascent()), s);
    update();
}

void ChartCanvas::paintEvent(QPaintEvent *e)
{
    QPainter p(this);
    p.drawImage(e->rect(), image_, e->rect());
}

void ChartCanvas::mouseMoveEvent(QMouseEvent *e)
{
    const QPoint pt = e->position().toPoint();
    emit mouseMoved(pt.x(), pt.y());
}

void ChartCanvas::mousePressEvent(QMouseEvent *e)
{
    const QPoint pt = e->position().toPoint();
    emit mousePressed(pt.x(), pt.y(), e->button());
}
