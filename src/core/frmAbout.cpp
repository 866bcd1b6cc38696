#include "frmAbout.h"
#include "core/shared_state.h"
#include "ui/widgets/form_position.h"
#include "ui/widgets/images.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

frmAbout::frmAbout(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About Brelvox"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto *pic1 = new QLabel(this);
    pic1->setObjectName(QStringLiteral("picAntenna"));
    pic1->setPixmap(images::antenna());
    auto *pic2 = new QLabel(this);
    pic2->setObjectName(QStringLiteral("picReceiver"));
    pic2->setPixmap(images::receiver());
    auto *title = new QLabel(QStringLiteral("Brelvox 2.0"), this);
    title->setObjectName(QStringLiteral("lblTitle"));
    QFont f = title->font();
    f.setPointSize(f.pointSize() + 8);
    f.setBold(true);
    title->setFont(f);
    auto *date = new QLabel(QStringLiteral("Station program for short-wave listeners, November 2026"), this);
    date->setObjectName(QStringLiteral("lblDate"));
    auto *news = new QLabel(
        QStringLiteral("For the latest information look in the README and the release notes\nthat came with this program."),
        this);
    news->setObjectName(QStringLiteral("lblNews"));
    auto *ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    connect(ok, &QPushButton::clicked, this, &QWidget::close);
    auto *g = new QGridLayout(this);
    g->addWidget(pic1, 0, 0, 3, 1);
    g->addWidget(title, 0, 1);
    g->addWidget(date, 1, 1);
    g->addWidget(news, 2, 1);
    g->addWidget(pic2, 0, 2, 3, 1);
    g->addWidget(ok, 3, 1, Qt::AlignCenter);
    nameForAccessibility(this);
}

void frmAbout::Form_Load()
{
    placeAtLoad(this, Win::frmAbout);
    show();
    isOpen(Win::frmAbout) = true;
}

void frmAbout::closeEvent(QCloseEvent *e)
{
    storeAtUnload(this, Win::frmAbout);
    isOpen(Win::frmAbout) = false;
    e->accept();
}
