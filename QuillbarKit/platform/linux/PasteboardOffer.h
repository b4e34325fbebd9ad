#pragma once

#include "platform/Pasteboard.h"
#include "platform/linux/PasteboardTypes.h"

#include <QByteArray>
#include <QStringList>

#include <deque>
#include <optional>
#include <utility>

/// Decides, of what another program offers, what to ask for and in which order, and gathers the answers.
///
/// Files come before text before images, as the contents are used; the owner is not asked for what then goes
/// unused, since making an image can take it seconds. Nothing is asked of a concealed offer.
class PasteboardOffer
{
public:
    /// `targets`: what the owner says that it can yield.
    explicit PasteboardOffer(const QStringList& targets);

    /// The target to ask for now; none when all that there is a use for has been asked for.
    std::optional<QString> nextTarget() const;

    /// The form that nextTarget() would yield.
    std::optional<PasteboardTypes::Form> nextForm() const;

    /// The answer to nextTarget(), and the type that the owner gave it.
    void take(const QByteArray& bytes, const QString& type);

    /// nextTarget() can't be had: the next best of the same form is tried, if there is one.
    void skip();

    /// What has been gathered so far. An image is not among it, but in image().
    const PasteboardContents& contents() const { return m_contents; }

    /// The image, in whichever file format the owner had; empty when there is none.
    const QByteArray& image() const { return m_image; }

    /// nextTarget() is more than may be taken, as it would be under its other names. Without its rich form a
    /// text is a text still; anything else would be half of what was copied, so no more is asked for.
    void skipTooLarge();

    /// Whether any form has been gathered.
    bool hasAny() const;

    /// Gives both away. Shared with nobody then, so that they can go to another thread for good.
    PasteboardContents takeContents() { return std::exchange(m_contents, {}); }
    QByteArray takeImage() { return std::exchange(m_image, {}); }

private:
    struct Step
    {
        PasteboardTypes::Form form;
        QString target;
    };

    void keep(const Step& step, const QByteArray& bytes, const QString& type);
    bool hasUseFor(PasteboardTypes::Form form) const;
    void dropUseless();

    std::deque<Step> m_steps;
    PasteboardContents m_contents;
    QByteArray m_image;
};
