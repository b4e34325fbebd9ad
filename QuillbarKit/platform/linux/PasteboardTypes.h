#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/// The names by which Linux programs offer clipboard contents, their "targets", and what they are to us.
/// Pure.
namespace PasteboardTypes {
enum class Form {
    Files,
    Text,
    Rtf,
    Html,
    Image,
};

/// Those targets of the offer that yield that form, best first.
QStringList targetsFor(Form form, const QStringList& offered);

/// The types of an offer: each form once, by its name in PasteboardType and in the order of the offer, and
/// every other target under its own name. Targets that are requests to the owner rather than contents are
/// left out. An offer that is concealed has PasteboardType::concealed in front.
QStringList types(const QStringList& offered);

/// Whether the offer bears the mark of a password manager or another one that asks not to be recorded. The
/// presence of the mark counts; programs differ in the value they give it.
bool isConcealed(const QStringList& offered);

/// The text in these bytes, the answer to `target` (one of the form Text); `type` is the encoding that the
/// owner says it answered in. A NUL at the end is taken off. None when the encoding is not known to us.
std::optional<QString> decodedText(const QByteArray& bytes, const QString& target, const QString& type);
} // namespace PasteboardTypes
