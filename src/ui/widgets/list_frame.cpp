#include "list_frame.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "ui/widgets/form_position.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>

ListFrame::ListFrame(QWidget *window, Win win, const QString &panelCaption)
    : QObject(window), window_(window), win_(win)
{
    txtFrequencyA = new QLineEdit(window);
    txtFrequencyA->setObjectName(QStringLiteral("txtFrequencyA"));
    txtFrequencyA->installEventFilter(this);
    cmdHeigh = new QPushButton(QStringLiteral("L"), window);
    cmdHeigh->setObjectName(QStringLiteral("cmdHeigh"));
    cmdPanel = new QPushButton(panelCaption, window);
    cmdPanel->setObjectName(QStringLiteral("cmdPanel"));
    connect(cmdPanel, &QPushButton::clicked, this, [] { showPanel(); });
}

ListFrame::~ListFrame()
{
    // Gone without its unload (the program ending): the hub must not write to it.
    if (following_)
        if (frmWelcome *w = frmWelcome::instance())
            w->hub.setFollower(win_, nullptr);
}

void ListFrame::load()
{
    isOpen(win_) = false;
    placeAtLoad(window_, win_);
    isOpen(win_) = true;
    frmWelcome::setOpenWindow(win_, window_);
    if (frmWelcome *w = frmWelcome::instance()) {
        w->hub.setFollower(win_, this);
        following_ = true;
    }
}

void ListFrame::unload()
{
    storeAtUnload(window_, win_);
    if (following_)
        if (frmWelcome *w = frmWelcome::instance())
            w->hub.setFollower(win_, nullptr);
    following_ = false;
    frmWelcome::forgetOpenWindow(win_, window_);
    isOpen(win_) = false;
}

bool ListFrame::toggleHeight()
{
    tall_ = !tall_;
    cmdHeigh->setText(tall_ ? QStringLiteral("S") : QStringLiteral("L"));
    return tall_;
}

void ListFrame::setFrequencyText(const QString &text) { txtFrequencyA->setText(text); }

QWidget *ListFrame::panelWindow()
{
    return rxType >= 0 && rxType <= 4 ? frmWelcome::openWindow(panelWin(rxType)) : nullptr;
}

void ListFrame::showPanel()
{
    if (QWidget *p = panelWindow()) {
        p->showNormal();
        p->raise();
        p->activateWindow();
    }
}

void ListFrame::txtFrequencyA_KeyPress()
{
    double f = numtext::Val(txtFrequencyA->text());
    if (frmWelcome *w = frmWelcome::instance())
        w->Change2FreqA(f);
}

bool ListFrame::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == txtFrequencyA) {
        if (event->type() == QEvent::MouseButtonDblClick) {
            txtFrequencyA->clear();
            return true;
        }
        if (event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent *>(event)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter) {
                txtFrequencyA_KeyPress();
                return true;
            }
        }
    }
    return QObject::eventFilter(watched, event);
}
