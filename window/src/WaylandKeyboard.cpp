#include "WaylandKeyboard.h"

#include <array>

#include <sys/mman.h>
#include <unistd.h>

namespace kivgles::window {

namespace {

constexpr std::uint32_t EVDEV_OFFSET = 8;  // between the kernel's numbers of keys and those of keymaps

WaylandKeyboard& This(void* self) { return *static_cast<WaylandKeyboard*>(self); }

}  // namespace

WaylandKeyboard::WaylandKeyboard(WindowState& kept)
    : window(kept), context(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {}

void WaylandKeyboard::Attend(wl_seat* seat) {
    static constexpr wl_seat_listener LISTENER = {
        [](void* self, wl_seat* its, std::uint32_t capabilities) { This(self).Follow(its, capabilities); },
        [](void*, wl_seat*, const char*) {}};
    if (context != nullptr) {
        wl_seat_add_listener(seat, &LISTENER, this);
    }
}

void WaylandKeyboard::Follow(wl_seat* seat, std::uint32_t capabilities) {
    if ((capabilities & WL_SEAT_CAPABILITY_KEYBOARD) == 0) {
        keyboard.reset();
    }
    if (keyboard != nullptr || (capabilities & WL_SEAT_CAPABILITY_KEYBOARD) == 0) {
        return;
    }
    static constexpr wl_keyboard_listener LISTENER = {
        [](void* self, wl_keyboard*, std::uint32_t format, int descriptor, std::uint32_t size) {
            This(self).Load(format, descriptor, size);
        },
        [](void*, wl_keyboard*, std::uint32_t, wl_surface*, wl_array*) {},
        [](void*, wl_keyboard*, std::uint32_t, wl_surface*) {},
        [](void* self, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t key,
           std::uint32_t keyState) {
            if (keyState == WL_KEYBOARD_KEY_STATE_PRESSED) {
                This(self).Press(key);
            }
        },
        [](void* self, wl_keyboard*, std::uint32_t, std::uint32_t depressed, std::uint32_t latched,
           std::uint32_t locked, std::uint32_t group) {
            if (This(self).state != nullptr) {
                xkb_state_update_mask(This(self).state.get(), depressed, latched, locked, 0, 0, group);
            }
        },
        [](void*, wl_keyboard*, std::int32_t, std::int32_t) {}};
    keyboard.reset(wl_seat_get_keyboard(seat));
    wl_keyboard_add_listener(keyboard.get(), &LISTENER, this);
}

void WaylandKeyboard::Load(std::uint32_t format, int descriptor, std::uint32_t size) {
    state.reset();
    void* const text = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
    close(descriptor);
    if (text == MAP_FAILED) {
        return;
    }
    if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1) {
        // Without the zero at its end.
        keymap.reset(xkb_keymap_new_from_buffer(context.get(), static_cast<const char*>(text), size - 1,
                                                XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS));
        state.reset(keymap == nullptr ? nullptr : xkb_state_new(keymap.get()));
    }
    munmap(text, size);
}

void WaylandKeyboard::Press(std::uint32_t key) {
    const xkb_keysym_t symbol =
        state == nullptr ? XKB_KEY_NoSymbol : xkb_state_key_get_one_sym(state.get(), key + EVDEV_OFFSET);
    std::array<char, 64> name;
    // "NoSymbol" is a name, too.
    if (symbol != XKB_KEY_NoSymbol && xkb_keysym_get_name(symbol, name.data(), name.size()) > 0) {
        window.Report(Event::KEY, name.data());
    }
}

}  // namespace kivgles::window
