#include "platform/linux/sound/CanberraAlertSound.h"

#include <canberra.h>

#include <chrono>
#include <memory>
#include <pthread.h>
#include <semaphore>
#include <system_error>
#include <thread>

namespace {
using namespace std::chrono_literals;

// The sound proper and, for a theme without it, what comes nearest.
constexpr const char* eventIds[] = {"bell", "complete", "message", "dialog-information"};
// No alert lasts longer; a server that stops answering in the middle is given up.
constexpr auto longestSound = 20s;

template <auto Destroy>
struct Destroyer
{
    template <typename T>
    void operator()(T* object) const
    {
        Destroy(object);
    }
};
using Context = std::unique_ptr<ca_context, Destroyer<ca_context_destroy>>;
using Properties = std::unique_ptr<ca_proplist, Destroyer<ca_proplist_destroy>>;

using Finished = std::counting_semaphore<>;

void onFinished(ca_context*, uint32_t, int, void* finished)
{
    static_cast<Finished*>(finished)->release();
}

Context makeContext()
{
    ca_context* created = nullptr;
    if (ca_context_create(&created) != CA_SUCCESS)
        return {};
    Context context(created);
    // Left to choose, the library would try the bare sound card where there is no server, and complain on
    // standard error where there is no card.
    ca_context_set_driver(created, "pulse");
    ca_context_change_props(created, CA_PROP_APPLICATION_NAME, "Quillbar", CA_PROP_APPLICATION_ID,
                            "com.vennor.quillbar", nullptr);
    return context;
}

/// Blocks until the sound has been played or has failed.
void play()
{
    Finished finished(0); // Outlives the context, whose destruction may still call back.
    const Context context = makeContext();
    if (!context)
        return;
    for (const char* id : eventIds) {
        ca_proplist* created = nullptr;
        if (ca_proplist_create(&created) != CA_SUCCESS)
            return;
        const Properties properties(created);
        ca_proplist_sets(created, CA_PROP_EVENT_ID, id);
        const int result = ca_context_play_full(context.get(), 0, created, onFinished, &finished);
        if (result == CA_SUCCESS)
            finished.try_acquire_for(longestSound);
        if (result != CA_ERROR_NOTFOUND)
            return;
    }
}
} // namespace

void CanberraAlertSound::beep()
{
    if (m_isBusy->exchange(true))
        return;
    try {
        // Connecting to a hung server takes until the library gives up. The thread is left to itself, since
        // whoever waited for it would hang as well: the end of the process among them.
        std::thread([isBusy = m_isBusy] {
            pthread_setname_np(pthread_self(), "alert-sound");
            play();
            isBusy->store(false);
        }).detach();
    } catch (const std::system_error&) {
        m_isBusy->store(false); // No thread to be had: silence.
    }
}
