#include "platform/linux/x11/X11HotKeys.h"

#include "platform/linux/x11/X11Connection.h"

#include <QPointer>

#include <limits>
#include <utility>

struct X11HotKeys::HotKey
{
    quint32 keyCode;
    quint32 modifiers;
    X11KeyGrabs::Handler handler;
    /// Where it is; null while another program holds the place.
    std::shared_ptr<X11KeyGrabs::Grab> grab = nullptr;
    xcb_keycode_t key = 0;
};

/// Gives the grabs back when destroyed; the service may be gone by then.
class X11HotKeys::GrabToken final : public Token
{
public:
    GrabToken(X11HotKeys* hotKeys, std::shared_ptr<HotKey> hotKey)
        : m_hotKeys(hotKeys), m_hotKey(std::move(hotKey))
    {}
    ~GrabToken() override
    {
        if (m_hotKeys)
            m_hotKeys->remove(m_hotKey);
    }

private:
    QPointer<X11HotKeys> m_hotKeys;
    std::shared_ptr<HotKey> m_hotKey;
};

X11HotKeys::X11HotKeys(X11Connection& connection, MainQueue& mainQueue, bool isXWayland, QObject* parent)
    : QObject(parent), m_connection(connection), m_keyboard(connection)
{
    if (!m_keyboard.isValid())
        return;
    if (!isXWayland)
        m_grabs.emplace(mainQueue);
    m_keyboard.watch();
    m_connection.setEventHandler([this](const xcb_generic_event_t& event) {
        if (m_keyboard.handleEvent(event))
            m_keyboardChanged = true;
    });
    connect(&m_connection, &X11Connection::eventsRead, this, [this] {
        if (std::exchange(m_keyboardChanged, false))
            followKeyboard();
    });
}

X11HotKeys::~X11HotKeys() = default;

std::unique_ptr<GlobalHotKeys::Token> X11HotKeys::registerHotKey(quint32 keyCode, quint32 modifiers,
                                                                 std::function<void()> handler)
{
    if (!m_grabs || !m_connection.isValid())
        return nullptr;
    auto hotKey = std::make_shared<HotKey>(
        HotKey{keyCode, modifiers, std::make_shared<const std::function<void()>>(std::move(handler))});
    if (!grab(*hotKey))
        return nullptr;
    m_hotKeys.push_back(hotKey);
    return std::make_unique<GrabToken>(this, std::move(hotKey));
}

std::optional<quint32> X11HotKeys::virtualKeyCode(quint32 scanCode) const
{
    if (!m_keyboard.isValid() || scanCode > std::numeric_limits<xcb_keycode_t>::max())
        return std::nullopt;
    return m_keyboard.virtualKey(static_cast<xcb_keycode_t>(scanCode));
}

bool X11HotKeys::grab(HotKey& hotKey)
{
    const auto key = m_keyboard.keycode(hotKey.keyCode);
    if (!key)
        return false;
    hotKey.key = *key;
    const auto& modifiers = m_keyboard.modifiers();
    hotKey.grab = m_grabs->grab(*key, modifiers.mask(hotKey.modifiers), modifiers, hotKey.handler);
    return hotKey.grab != nullptr;
}

void X11HotKeys::remove(const std::shared_ptr<HotKey>& hotKey)
{
    m_grabs->ungrab(hotKey->grab);
    // A press that is on its way to it must find nothing: the token's owner may be gone.
    hotKey->handler.reset();
    std::erase(m_hotKeys, hotKey);
}

void X11HotKeys::followKeyboard()
{
    const auto before = m_keyboard.modifiers();
    m_keyboard.read();
    const auto& now = m_keyboard.modifiers();
    std::vector<HotKey*> moved;
    for (const auto& hotKey : m_hotKeys) {
        const bool stays =
            hotKey->grab && m_keyboard.keycode(hotKey->keyCode) == hotKey->key && before == now;
        if (!stays)
            moved.push_back(hotKey.get());
    }
    // All old places are free before the first new one is taken: two hot keys may change places.
    for (auto* hotKey : moved)
        m_grabs->ungrab(std::exchange(hotKey->grab, nullptr));
    for (auto* hotKey : moved)
        grab(*hotKey);
}
