#include "platform/linux/x11/X11HotKeys.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Reply.h"
#include "support/MainQueue.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace {
constexpr unsigned allModifiers = 0xff;
}

struct X11HotKeys::HotKey
{
    quint32 keyCode;
    quint32 modifiers;
    std::function<void()> handler;
    /// Where the grabs are: a key, and the masks it is grabbed with.
    xcb_keycode_t key = 0;
    uint16_t mask = 0;
    std::vector<uint16_t> masks = {};
    bool isDown = false;
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
    : QObject(parent), m_connection(connection), m_mainQueue(mainQueue), m_isXWayland(isXWayland),
      m_keyboard(connection)
{
    if (!m_keyboard.isValid())
        return;
    m_keyboard.watch();
    m_keyboard.detectAutoRepeat();
    m_connection.setEventHandler([this](const xcb_generic_event_t& event) { handleEvent(event); });
    connect(&m_connection, &X11Connection::eventsRead, this, [this] {
        if (std::exchange(m_keyboardChanged, false))
            followKeyboard();
    });
}

X11HotKeys::~X11HotKeys() = default;

std::unique_ptr<GlobalHotKeys::Token> X11HotKeys::registerHotKey(quint32 keyCode, quint32 modifiers,
                                                                 std::function<void()> handler)
{
    if (m_isXWayland || !m_connection.isValid() || !m_keyboard.isValid())
        return nullptr;
    auto hotKey = std::make_shared<HotKey>(HotKey{keyCode, modifiers, std::move(handler)});
    if (!grab(*hotKey))
        return nullptr;
    m_hotKeys.push_back(hotKey);
    return std::make_unique<GrabToken>(this, std::move(hotKey));
}

bool X11HotKeys::grab(HotKey& hotKey)
{
    const auto key = m_keyboard.keycode(hotKey.keyCode);
    if (!key)
        return false;
    const auto mask = m_keyboard.modifiers().mask(hotKey.modifiers);
    // The server lets a program grab its own combinations twice, and one ungrab would end both.
    if (std::ranges::any_of(m_hotKeys, [&](const auto& other) {
            return !other->masks.empty() && other->key == *key && other->mask == mask;
        }))
        return false;
    hotKey.key = *key;
    hotKey.mask = mask;
    std::vector<std::pair<uint16_t, xcb_void_cookie_t>> requests;
    for (const auto locks : m_keyboard.modifiers().lockCombinations()) {
        const auto full = static_cast<uint16_t>(mask | locks);
        requests.emplace_back(full, xcb_grab_key_checked(m_connection.get(), false, m_connection.root(), full,
                                                         *key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    bool isWhole = true;
    for (const auto& [full, cookie] : requests) {
        if (const X11Pointer<xcb_generic_error_t> refused{xcb_request_check(m_connection.get(), cookie)})
            isWhole = false;
        else
            hotKey.masks.push_back(full);
    }
    if (!isWhole)
        ungrab(hotKey);
    return isWhole && m_connection.isValid();
}

void X11HotKeys::ungrab(HotKey& hotKey)
{
    if (m_connection.isValid()) {
        for (const auto mask : hotKey.masks)
            xcb_ungrab_key(m_connection.get(), hotKey.key, m_connection.root(), mask);
        xcb_flush(m_connection.get());
    }
    hotKey.masks.clear();
}

void X11HotKeys::remove(const std::shared_ptr<HotKey>& hotKey)
{
    ungrab(*hotKey);
    std::erase(m_hotKeys, hotKey);
}

void X11HotKeys::handleEvent(const xcb_generic_event_t& event)
{
    if (m_keyboard.handleEvent(event)) {
        m_keyboardChanged = true;
        return;
    }
    switch (event.response_type & 0x7f) {
    case XCB_KEY_PRESS:
        handlePress(reinterpret_cast<const xcb_key_press_event_t&>(event));
        break;
    case XCB_KEY_RELEASE:
        for (const auto& hotKey : m_hotKeys) {
            if (hotKey->key == reinterpret_cast<const xcb_key_release_event_t&>(event).detail)
                hotKey->isDown = false;
        }
        break;
    default:
        break;
    }
}

void X11HotKeys::handlePress(const xcb_key_press_event_t& event)
{
    const auto mask = event.state & allModifiers & ~unsigned{m_keyboard.modifiers().locks};
    for (const auto& hotKey : m_hotKeys) {
        if (hotKey->key != event.detail || hotKey->mask != mask || std::exchange(hotKey->isDown, true))
            continue;
        m_mainQueue.async([weak = std::weak_ptr(hotKey)] {
            if (const auto pressed = weak.lock())
                pressed->handler();
        });
    }
}

void X11HotKeys::followKeyboard()
{
    const auto before = m_keyboard.modifiers();
    m_keyboard.read();
    const auto& now = m_keyboard.modifiers();
    std::vector<HotKey*> moved;
    for (const auto& hotKey : m_hotKeys) {
        const bool stays =
            !hotKey->masks.empty() && m_keyboard.keycode(hotKey->keyCode) == hotKey->key && before == now;
        if (!stays)
            moved.push_back(hotKey.get());
    }
    // All old places are free before the first new one is taken: two hot keys may change places.
    for (auto* hotKey : moved)
        ungrab(*hotKey);
    for (auto* hotKey : moved) {
        hotKey->isDown = false;
        grab(*hotKey);
    }
}
