#include "app/desktop/print_choice_dialog.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessaly::desktop {

PrintChoiceDialog::PrintChoiceDialog(const PrintChoice& choice, QWidget* parent)
    : QDialog(parent)
    , m_listing(new QRadioButton(QStringLiteral("リスト印刷"), this))
    , m_screen(new QRadioButton(QStringLiteral("画面印刷"), this))
    , m_start(new QSpinBox(this))
    , m_end(new QSpinBox(this))
    , m_lengths {new QRadioButton(QStringLiteral("１頁５０行（A4標準）"), this),
          new QRadioButton(QStringLiteral("１頁７５行（B4標準）"), this),
          new QRadioButton(QStringLiteral("１頁１００行（A3標準）"), this)}
    , m_positive(new QRadioButton(QStringLiteral("白黒反転しない/Positive Print"), this))
    , m_negative(new QRadioButton(QStringLiteral("白黒反転印刷/Negative Print"), this))
{
    setWindowTitle(QStringLiteral("リスト／画面印刷選択"));
    auto* layout = new QVBoxLayout(this);
    auto* kinds = new QButtonGroup(this);
    kinds->addButton(m_listing);
    kinds->addButton(m_screen);

    auto* listing = new QGroupBox(QStringLiteral("プログラムリスト"), this);
    auto* listingLayout = new QFormLayout(listing);
    listingLayout->addRow(m_listing);
    for (QSpinBox* field : {m_start, m_end})
        field->setRange(1, 65536);
    listingLayout->addRow(QStringLiteral("開始行No"), m_start);
    listingLayout->addRow(QStringLiteral("終了行No"), m_end);
    listingLayout->addRow(new QLabel(QStringLiteral("１行１２０文字"), listing));
    auto* lengths = new QButtonGroup(this);
    for (QRadioButton* length : m_lengths) {
        lengths->addButton(length);
        listingLayout->addRow(length);
    }
    layout->addWidget(listing);

    auto* screen = new QGroupBox(QStringLiteral("ＢＡＳＩＣ画面"), this);
    auto* screenLayout = new QVBoxLayout(screen);
    screenLayout->addWidget(m_screen);
    screenLayout->addWidget(new QLabel(QStringLiteral("画面印刷の白黒反転設定/Reverse Print"), screen));
    auto* reverse = new QButtonGroup(this);
    reverse->addButton(m_positive);
    reverse->addButton(m_negative);
    screenLayout->addWidget(m_positive);
    screenLayout->addWidget(m_negative);
    layout->addWidget(screen);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("ｷｬﾝｾﾙ"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);

    (choice.kind == PrintChoice::Kind::Screen ? m_screen : m_listing)->setChecked(true);
    m_start->setValue(choice.startLine);
    m_end->setValue(choice.endLine);
    m_lengths[choice.pageLength >= 0 && choice.pageLength <= 2 ? choice.pageLength : 0]->setChecked(true);
    (choice.negative ? m_negative : m_positive)->setChecked(true);
}

PrintChoice PrintChoiceDialog::choice() const
{
    PrintChoice choice;
    choice.kind = m_screen->isChecked() ? PrintChoice::Kind::Screen : PrintChoice::Kind::Listing;
    choice.startLine = m_start->value();
    choice.endLine = m_end->value();
    choice.pageLength = m_lengths[1]->isChecked() ? 1 : m_lengths[2]->isChecked() ? 2 : 0;
    choice.negative = m_negative->isChecked();
    return choice;
}

} // namespace tessaly::desktop
