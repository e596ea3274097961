// The questions the document asks the user: file names for Open and Save As, and whether to save
// changes. The window uses dialogs; tests give the answers themselves.
#pragma once

#include <QString>

class QWidget;

namespace tessaly::desktop {

enum class SaveChangesAnswer { Save, Discard, Cancel };

class DocumentPrompts {
public:
    virtual ~DocumentPrompts() = default;
    // An empty name means Cancel.
    virtual QString openFileName() = 0;
    virtual QString saveFileName(const QString& suggested) = 0;
    virtual SaveChangesAnswer saveChanges(const QString& title) = 0;
};

// The file dialogs and the message box of the desktop.
class DialogPrompts final : public DocumentPrompts {
public:
    explicit DialogPrompts(QWidget* parent)
        : m_parent(parent)
    {
    }
    QString openFileName() override;
    QString saveFileName(const QString& suggested) override;
    SaveChangesAnswer saveChanges(const QString& title) override;

private:
    QWidget* m_parent;
};

} // namespace tessaly::desktop
