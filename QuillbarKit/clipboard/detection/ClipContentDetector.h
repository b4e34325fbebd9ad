#pragma once

#include "clipboard/detection/LinkDetector.h"
#include "clipboard/history/DetectedKind.h"

#include <QStringView>

/// Tells what a copied text is, for the way its row is drawn. Pure functions, for any thread.
namespace ClipContentDetector {
/// A colour outranks a link, a link outranks code, and what is none of them is plain. Whitespace and newlines
/// around the text don't count. Linear in the text, of any length.
DetectedKind detect(QStringView text);

/// The same with the given link detector; without one nothing is a link.
DetectedKind detect(QStringView text, const LinkDetector* linkDetector);
} // namespace ClipContentDetector
