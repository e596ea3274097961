#include "app/desktop/list_edit_dialog.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessaly::desktop {

ListEditDialog::ListEditDialog(const QString& listing, ListEditMode mode, QWidget* parent)
    : QDialog(parent)
    , m_listing(new QPlainTextEdit(listing, this))
    , m_replace(new QRadioButton(QStringLiteral("新規挿入"), this))
    , m_merge(new QRadioButton(QStringLiteral("挿入置換"), this))
{
    setWindowTitle(QStringLiteral("リスト編集ﾀﾞｲｱﾛｸﾞ"));
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("OKを押すとプログラムを置換します。"), this));
    auto* ruler = new QLabel(QStringLiteral("12345678901234567890123456789012345678901234567890123456789012345678901234567890"), this);
    ruler->setFont(fixed);
    layout->addWidget(ruler);
    m_listing->setFont(fixed);
    m_listing->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_listing->setMinimumSize(QFontMetrics(fixed).horizontalAdvance(QLatin1Char('0')) * 84, 300);
    layout->addWidget(m_listing);

    auto* paste = new QGroupBox(QStringLiteral("貼り付け"), this);
    auto* pasteLayout = new QHBoxLayout(paste);
    pasteLayout->addWidget(m_replace);
    pasteLayout->addWidget(m_merge);
    (mode == ListEditMode::Merge ? m_merge : m_replace)->setChecked(true);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(QDialogButtonBox::Ok);
    buttons->addButton(QStringLiteral("ｷｬﾝｾﾙ"), QDialogButtonBox::RejectRole);
    auto* sort = buttons->addButton(QStringLiteral("SORT"), QDialogButtonBox::ActionRole);
    auto* renum = buttons->addButton(QStringLiteral("RENUM"), QDialogButtonBox::ActionRole);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { closeWith(ListEditAnswer::Ok); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(sort, &QPushButton::clicked, this, [this] { closeWith(ListEditAnswer::Sort); });
    connect(renum, &QPushButton::clicked, this, [this] { closeWith(ListEditAnswer::Renum); });
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(paste);
    bottom->addWidget(buttons);
    layout->addLayout(bottom);

    // The caret at the end of the listing, nothing selected.
    m_listing->setFocus();
    m_listing->moveCursor(QTextCursor::End);
}

ListEditMode ListEditDialog::mode() const { return m_merge->isChecked() ? ListEditMode::Merge : ListEditMode::Replace; }

void ListEditDialog::closeWith(ListEditAnswer answer)
{
    m_answer = answer;
    accept();
}

} // namespace tessaly::desktop
