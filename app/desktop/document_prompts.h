// The questions the document asks the user: file names for Open and Save As, whether to save
// changes, and the questions of the list-editing commands. The window uses dialogs; tests give
// the answers themselves.
#pragma once

#include <QString>

class QWidget;

namespace tessaly::desktop {
struct PrintChoice;
}

namespace tessaly::desktop {

enum class SaveChangesAnswer { Save, Discard, Cancel };
// How the list-edit dialog was closed: Cancel, or OK, SORT or RENUM (each of which closes it with OK).
enum class ListEditAnswer { Cancel, Ok, Sort, Renum };
// The paste mode of the list-edit dialog: the program replaced, or the lines merged into it.
enum class ListEditMode { Replace = 0, Merge = 1 };

class DocumentPrompts {
public:
    virtual ~DocumentPrompts() = default;
    // An empty name means Cancel.
    virtual QString openFileName() = 0;
    virtual QString saveFileName(const QString& suggested) = 0;
    virtual SaveChangesAnswer saveChanges(const QString& title) = 0;
    // The list-editing commands: a question with OK and Cancel (true for OK), a message with OK,
    // and the range of line numbers (1 to 65536 each; false for Cancel).
    virtual bool confirm(const QString& text) = 0;
    virtual void tell(const QString& text) = 0;
    virtual bool lineRange(const QString& caption, int& start, int& end) = 0;
    // The list-edit dialog over listing (UTF-8), which the user may change, with its mode.
    virtual ListEditAnswer editListing(QString& listing, ListEditMode& mode) = 0;
    // What to print (the listing or the screen, and how); false for Cancel.
    virtual bool printChoice(PrintChoice& choice) = 0;
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
    bool confirm(const QString& text) override;
    void tell(const QString& text) override;
    bool lineRange(const QString& caption, int& start, int& end) override;
    ListEditAnswer editListing(QString& listing, ListEditMode& mode) override;
    bool printChoice(PrintChoice& choice) override;

private:
    QWidget* m_parent;
};

} // namespace tessaly::desktop
