// The input: the targets of an offer, one a line, then an empty line, then the bytes that each of them
// yields.

#include "Require.h"
#include "platform/linux/PasteboardForms.h"
#include "platform/linux/PasteboardOffer.h"

#include <QByteArray>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {
void requireServed(const PasteboardContents& contents)
{
    for (const QString& target : PasteboardForms::targets(contents))
        require(PasteboardForms::answer(contents, target).has_value());
    if (!contents.filePaths.isEmpty()) {
        PasteboardOffer again({QStringLiteral("text/uri-list")});
        again.take(PasteboardForms::answer(contents, QStringLiteral("text/uri-list"))->bytes, {});
        require(again.contents().filePaths == contents.filePaths);
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const qsizetype head = std::max<qsizetype>(input.indexOf("\n\n"), 0);
    const QByteArray bytes = input.mid(head);
    const QStringList targets = QString::fromLatin1(input.first(head)).split(u'\n');

    PasteboardOffer offer(targets);
    const bool isConcealed = offer.contents().types.contains(PasteboardType::concealed);
    require(!isConcealed || !offer.nextTarget());
    qsizetype asked = 0;
    while (const auto target = offer.nextTarget()) {
        require(targets.contains(*target));
        require(++asked <= targets.size());
        if (asked % 4 == 0)
            offer.skip();
        else
            offer.take(bytes, asked % 2 ? *target : QStringLiteral("STRING"));
    }
    const PasteboardContents& contents = offer.contents();
    require(!contents.png);
    require(contents.filePaths.isEmpty() || (!contents.string && offer.image().isEmpty()));
    require(contents.data.empty() || contents.string);
    requireServed(contents);
    return 0;
}
