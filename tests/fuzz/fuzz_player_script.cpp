#include "Require.h"
#include "platform/linux/scripting/ScriptError.h"
#include "platform/linux/scripting/ScriptEvaluator.h"
#include "platform/linux/scripting/ScriptParser.h"
#include "platform/linux/scripting/ScriptablePlayer.h"

#include <QString>

#include <cstddef>
#include <cstdint>

namespace {
/// Has a value of every kind, by the length of the name, and fails now and then.
class OddPlayer final : public ScriptablePlayer
{
public:
    ScriptValue property(const QString& name) override
    {
        switch (name.size() % 7) {
        case 0:
            return true;
        case 1:
            return qint64(215'000);
        case 2:
            return 12.5;
        case 3:
            return QStringLiteral("text");
        case 4:
            return QByteArray("picture");
        case 5:
            return {};
        default:
            throw ScriptError{name};
        }
    }

    void setProperty(const QString& name, const ScriptValue&) override { perform(name); }

    void perform(const QString& verb) override
    {
        require(!verb.isEmpty());
        if (verb.size() % 2 == 0)
            throw ScriptError{verb};
    }
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto source = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto script = ScriptParser::parse(source);
    if (!script)
        return 0;
    OddPlayer player;
    const auto result = ScriptEvaluator::evaluate(*script, player);
    require(!result.error || (!result.stringValue && !result.data));
    require(!result.stringValue || !result.data);
    return 0;
}
