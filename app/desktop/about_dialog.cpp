// The about box: icon, name and version, OK.
#include "app/desktop/about_dialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "app/desktop/tool_icons.h"

namespace tessaly::desktop {

CAboutDlg::CAboutDlg(QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Tessaly のﾊﾞｰｼﾞｮﾝ情報"));
    auto* icon = new QLabel(this);
    icon->setPixmap(applicationIcon().pixmap(32, 32));
    auto* texts = new QVBoxLayout;
    texts->addWidget(new QLabel(QStringLiteral("Tessaly Version 1.3.9"), this));
    texts->addWidget(new QLabel(QStringLiteral("(for Alll Windows)"), this));
    auto* row = new QHBoxLayout;
    row->addWidget(icon, 0, Qt::AlignTop);
    row->addLayout(texts);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(row);
    layout->addWidget(buttons);
}

} // namespace tessaly::desktop
