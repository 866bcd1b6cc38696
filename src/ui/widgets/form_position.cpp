#include "form_position.h"
#include "core/settings_files.h"

#include <QWidget>

void placeAtLoad(QWidget *w, Win n)
{
    const size_t i = size_t(n);
    w->move(formLeft[i] / kTwipsPerPixel, formTop[i] / kTwipsPerPixel);
}

void storeAtUnload(const QWidget *w, Win n)
{
    const QPoint p = w->pos();
    const auto s = settings::positionToStore(double(p.x()) * kTwipsPerPixel, double(p.y()) * kTwipsPerPixel,
                                             double(w->frameGeometry().width()) * kTwipsPerPixel);
    formLeft[size_t(n)] = s.left;
    formTop[size_t(n)] = s.top;
}

void nameForAccessibility(QWidget *w)
{
    if (!w->objectName().isEmpty() && w->accessibleDescription().isEmpty())
        w->setAccessibleDescription(w->objectName());
    for (QWidget *c : w->findChildren<QWidget *>())
        if (!c->objectName().isEmpty() && c->accessibleDescription().isEmpty())
            c->setAccessibleDescription(c->objectName());
}
