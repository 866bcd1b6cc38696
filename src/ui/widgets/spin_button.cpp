#include "spin_button.h"

#include <QBoxLayout>

SpinButton::SpinButton(Qt::Orientation orientation, QWidget *parent)
    : QWidget(parent), up_(new QToolButton(this)), down_(new QToolButton(this))
{
    const bool vertical = orientation == Qt::Vertical;
    up_->setObjectName(QStringLiteral("spinUp"));
    down_->setObjectName(QStringLiteral("spinDown"));
    up_->setArrowType(vertical ? Qt::UpArrow : Qt::RightArrow);
    down_->setArrowType(vertical ? Qt::DownArrow : Qt::LeftArrow);
    up_->setAccessibleName(tr("Up"));
    down_->setAccessibleName(tr("Down"));
    up_->setToolTip(tr("Up"));
    down_->setToolTip(tr("Down"));
    for (QToolButton *b : {up_, down_}) {
        // The keys belong to the window that holds the spin button.
        b->setFocusPolicy(Qt::NoFocus);
        b->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    }
    auto *box = new QBoxLayout(vertical ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight, this);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(1);
    if (vertical) {
        box->addWidget(up_);
        box->addWidget(down_);
    } else {
        box->addWidget(down_);
        box->addWidget(up_);
    }
    connect(up_, &QToolButton::clicked, this, &SpinButton::SpinUp);
    connect(down_, &QToolButton::clicked, this, &SpinButton::SpinDown);
}
