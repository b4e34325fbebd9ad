#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <optional>

/// The names under which contents are told apart here, whatever the desktop calls them.
namespace PasteboardType {
inline const QString plainText = QStringLiteral("public.utf8-plain-text");
inline const QString rtf = QStringLiteral("public.rtf");
inline const QString html = QStringLiteral("public.html");
inline const QString png = QStringLiteral("public.png");
inline const QString fileURL = QStringLiteral("public.file-url");
/// Marks contents that nothing may record.
inline const QString concealed = QStringLiteral("org.nspasteboard.ConcealedType");
} // namespace PasteboardType

/// What a pasteboard holds at one time, in the forms that this program has a use for.
struct PasteboardContents
{
    /// Every type that the owner offers: those above by these names, the others as the desktop names them.
    QStringList types;
    /// Absolute paths of the files it names, in their order. URLs that are no local files are left out.
    QStringList filePaths;
    std::optional<QString> string;
    /// Rich forms of the text: `PasteboardType::rtf`, `PasteboardType::html`.
    std::map<QString, QByteArray> data;
    /// The image, as a complete PNG file.
    std::optional<QByteArray> png;
    /// The program that was in front when another program put this on the clipboard, as
    /// Workspace::frontmostApplication() names it; none when that can't be told, or of what is ours.
    std::optional<QString> copiedIn;

    bool operator==(const PasteboardContents&) const = default;
};

/// The desktop's clipboard, the one that Copy and Paste use. Main thread only, and never waits for another
/// program: what another one has copied has been fetched before the change count tells of it.
class Pasteboard
{
public:
    virtual ~Pasteboard() = default;

    /// Grows with each change of the contents, whoever made it; no number comes again in a later run.
    virtual qint64 changeCount() const = 0;

    /// What the change count stands for; nothing at all some time after a program has emptied the clipboard
    /// or has taken its contents along at its end. Only what there is a use for has been asked of the owner:
    /// no text and no image where there are files, no image where there is text that is more than blanks,
    /// nothing where the contents are concealed. Forms that the owner failed to hand over in time, or that
    /// were too large, are missing.
    virtual const PasteboardContents& contents() const = 0;

    /// Replaces the contents by ours and serves them to other programs for as long as this one lives and none
    /// copies something else. `types` and `copiedIn` need not be filled in. changeCount() has grown when it
    /// returns, and contents() are these.
    virtual void write(PasteboardContents contents) = 0;

    /// Calls `then` once, on a later turn, after another program has begun to fetch what write() has put
    /// there; asking what there is does not count. A later call takes the place of an earlier one.
    virtual void whenRead(std::function<void()> then) = 0;

    /// Called after each growth of the change count, inside write() too; one handler, the last one set. So
    /// nobody need poll a count that stands still.
    virtual void setChangeHandler(std::function<void()> handler) = 0;
};
