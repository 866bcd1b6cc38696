#pragma once
#include <QWidget>

// Who we are: the program's title and date, and where to look for news.
class frmAbout : public QWidget {
    Q_OBJECT
public:
    explicit frmAbout(QWidget *parent = nullptr);
    void Form_Load();

protected:
    void closeEvent(QCloseEvent *e) override;
};
