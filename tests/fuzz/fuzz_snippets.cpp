#include "Require.h"
#include "clipboard/snippets/SnippetFile.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto snippets = SnippetFile::read(bytes);
    // What is read can be written and read again.
    require(!snippets || SnippetFile::read(QByteArrayList(SnippetFile::write(*snippets)).join()) == snippets);
    return 0;
}
