#pragma once

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

struct FreeX11Memory
{
    void operator()(void* pointer) const { std::free(pointer); }
};

/// What the library hands out on the heap.
template <class T>
using X11Pointer = std::unique_ptr<T, FreeX11Memory>;

/// Waits for the reply to a request; empty when the server refused it or is gone.
template <class Reply, class Cookie>
X11Pointer<Reply> x11Reply(Reply* (*wait)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                           xcb_connection_t* connection, Cookie cookie)
{
    xcb_generic_error_t* error = nullptr;
    X11Pointer<Reply> reply(wait(connection, cookie, &error));
    std::free(error);
    return reply;
}
