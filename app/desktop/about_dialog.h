// CAboutDlg: the about box.
#pragma once

#include <QDialog>

namespace tessaly::desktop {

class CAboutDlg : public QDialog {
    Q_OBJECT
public:
    explicit CAboutDlg(QWidget* parent = nullptr);
};

} // namespace tessaly::desktop
