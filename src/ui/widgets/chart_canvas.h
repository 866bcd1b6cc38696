#pragma once
// The drawing surface of the measuring windows. Its coordinates are pixels of the window's own
// scale, as the windows compute them; what is drawn is kept in an image, so it survives covering,
// resizing and repaint. Lines include both ends; a box is filled from corner to corner inclusive.
// Labels the windows place by pixel are children of the canvas.
#include <QColor>
#include <QImage>
#include <QWidget>

class ChartCanvas : public QWidget {
    Q_OBJECT
public:
    ChartCanvas(int width, int height, QWidget *parent = nullptr);

    // The sixteen standard colours, 0 black ... 15 white.
    static QColor standardColor(int n);

    QColor backColor() const { return back_; }
    void setBackColor(const QColor &c) { back_ = c; }
    // The whole surface in the back colour.
    void cls();

    void line(int x1, int y1, int x2, int y2, const QColor &c);
    void box(int x1, int y1, int x2, int y2, const QColor &c);
    // Text with its top left corner at (x, y), in the canvas's font.
    void text(int x, int y, const QString &s, const QColor &c = Qt::black);

    QColor pixel(int x, int y) const { return image_.pixelColor(x, y); }
    const QImage &image() const { return image_; }

signals:
    void mouseMoved(int x, int y);
    void mousePressed(int x, int y, Qt::MouseButton button);

protected:
    void paintEvent(QPaintEvent *e) override;
    void mouseMoveEvent(QMouseEvent *e) override;
    void mousePressEvent(QMouseEvent *e) override;

private:
    void plot(int x, int y, QRgb c);
    QImage image_;
    QColor back_;
};
