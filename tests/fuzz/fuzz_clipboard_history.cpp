#include "Require.h"
#include "clipboard/history/ClipboardHistoryFile.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto store = ClipboardHistoryFile::read(bytes);
    if (!store)
        return 0;
    // What is read can be written and read again, and then nothing changes any more.
    const QByteArray written =
        QByteArrayList(ClipboardHistoryFile::write(store->clips, store->boards)).join();
    const auto again = ClipboardHistoryFile::read(written);
    require(again == store);
    require(QByteArrayList(ClipboardHistoryFile::write(again->clips, again->boards)).join() == written);
    for (const Clip& clip : store->clips) {
        if (clip.imageData)
            require(clip.imageData->bytes().size() == clip.imageData->size());
        require(clip.hasSameContentAs(clip));
    }
    return 0;
}
