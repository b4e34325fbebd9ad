#pragma once

#include <QtGlobal>

#include <chrono>

/// The bounds within which other programs are dealt with over the clipboard.
struct X11PasteboardOptions
{
    /// How long an owner may take to hand over all that is asked of it; the rest is then given up.
    std::chrono::milliseconds offerDeadline{5000};

    /// How many bytes are taken from one owner for one copy.
    qint64 maxOfferBytes = qint64{512} << 20;

    /// How many bytes, of the owner's, of a text and of each of its rich forms. Less than of an image, since
    /// a text is read, shown and saved on the main thread.
    qint64 largestText = qint64{16} << 20;

    /// An owner is asked once it has stood still for `settleQuiet`; or at the first change that comes
    /// `settleAtMost` or more after the first one of a row.
    /// Many programs take the clipboard two or three times for one copy, and a program gone wild does it a
    /// thousand times a second: each would be asked for contents that nobody gets to see. Both together are
    /// far below the time in which a person copies and looks.
    std::chrono::milliseconds settleQuiet{30};
    std::chrono::milliseconds settleAtMost{200};

    /// How long the contents outlive their owner. Whoever looks at them in beats, of less than this, misses
    /// nothing of a program that copies and ends.
    std::chrono::milliseconds emptyAfter{1000};

    /// How long a program that takes our contents piece by piece may rest between two pieces.
    std::chrono::milliseconds requestorPatience{10000};

    /// How long the end of the program may be held up by the session's clipboard manager, which takes the
    /// contents over.
    std::chrono::milliseconds handOver{1000};
};
