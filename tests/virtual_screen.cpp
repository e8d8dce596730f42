#include "tests/virtual_screen.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

namespace {

Display* x(void* display) {
    return static_cast<Display*>(display);
}

// The show's window at or below another; None where there is none.
Window findWindow(Display* display, Window window) {
    char* name = nullptr;
    XFetchName(display, window, &name);
    Window found = name && std::string(name) == "Valojuova" ? window : None;
    if (name) XFree(name);

    Window ignored, *children = nullptr;
    unsigned count = 0;
    if (!found) XQueryTree(display, window, &ignored, &ignored, &children, &count);
    for (unsigned i = 0; i < count && !found; i++) found = findWindow(display, children[i]);
    if (children) XFree(children);
    return found;
}

}  // namespace

VirtualScreen::VirtualScreen(int width, int height, bool managed) : width(width), height(height) {
    int output[2];
    if (pipe(output) != 0) return;
    const std::string size = std::to_string(width) + "x" + std::to_string(height) + "x24";
    server = startProcess({"Xvfb", "-displayfd", "1", "-screen", "0", size, "-noreset"}, output[1]);
    close(output[1]);
    FILE* lines = fdopen(output[0], "r");
    int number = -1;
    if (fscanf(lines, "%d", &number) == 1) {
        name = ":" + std::to_string(number);
        environment.set("DISPLAY", name);
        display = XOpenDisplay(nullptr);
    }
    fclose(lines);
    if (!display) problem = "Xvfb does not start";
    if (!display || !managed) return;
    // Windows that ask to be shown while it starts are forgotten: SDL 1.2 then waits for its own without end.
    const ScratchDirectory folder;
    const std::string started = folder.file("started");
    manager = startProcess({"openbox", "--startup", "touch " + started});
    if (!await(manager, [&] { return std::filesystem::exists(started); })) problem = "openbox does not start";
}

VirtualScreen::~VirtualScreen() {
    if (display) XCloseDisplay(x(display));
    if (manager > 0) endProcess(manager, SIGKILL);
    if (server > 0) endProcess(server, SIGKILL);
}

std::vector<uint32_t> VirtualScreen::grab() const {
    XImage* image =
        XGetImage(x(display), DefaultRootWindow(x(display)), 0, 0, width, height, AllPlanes, ZPixmap);
    const auto* first = reinterpret_cast<const uint32_t*>(image->data);
    std::vector<uint32_t> pixels(first, first + size_t(width) * height);
    for (uint32_t& pixel : pixels) pixel &= 0xffffff;
    XDestroyImage(image);
    return pixels;
}

Rect VirtualScreen::windowRect() const {
    // Windows may go while they are looked at.
    const auto before = XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    const Window root = DefaultRootWindow(x(display));
    Rect rect{};
    if (const Window window = findWindow(x(display), root)) {
        XWindowAttributes attributes{};
        Window ignored;
        XGetWindowAttributes(x(display), window, &attributes);
        XTranslateCoordinates(x(display), window, root, 0, 0, &rect.x, &rect.y, &ignored);
        rect.width = attributes.width;
        rect.height = attributes.height;
    }
    XSetErrorHandler(before);
    return rect;
}

void VirtualScreen::type(const std::string& keys) const {
    outputOf("DISPLAY=" + name + " xdotool key --delay 300 " + keys);
}

void VirtualScreen::closeWindow() const {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = findWindow(x(display), DefaultRootWindow(x(display)));
    event.xclient.message_type = XInternAtom(x(display), "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = long(XInternAtom(x(display), "WM_DELETE_WINDOW", False));
    XSendEvent(x(display), event.xclient.window, False, NoEventMask, &event);
    XSync(x(display), False);
}

WaylandDesktop::WaylandDesktop(const VirtualScreen& screen, double scale, bool native) {
    const std::string names = folder.file("names");
    const std::string config =
        folder.write("config", "output * resolution " + std::to_string(screen.width) + "x" +
                                   std::to_string(screen.height) + " scale " + std::to_string(scale) +
                                   "\noutput * background #204060 solid_color\n"
                                   "default_floating_border none\nxwayland force\n"
                                   "exec echo \"$WAYLAND_DISPLAY $DISPLAY\" >" +
                                   names + "\n");
    environment.set("XDG_RUNTIME_DIR", folder.path);
    environment.set("WLR_BACKENDS", "x11");
    environment.set("WLR_RENDERER", "pixman");
    compositor = startProcess({"sway", "--config", config});
    if (!await(compositor, [&] { return contentOf(names).ends_with('\n'); })) {
        problem = "sway does not start";
        return;
    }
    std::string socket, server;
    std::ifstream(names) >> socket >> server;
    environment.set("WAYLAND_DISPLAY", socket);
    environment.set("DISPLAY", server);
    environment.set("SDL_VIDEODRIVER", native ? "wayland" : "x11");
    environment.set("LIBGL_ALWAYS_SOFTWARE", "1");  // or drivers tell that they find no card
}

WaylandDesktop::~WaylandDesktop() {
    if (compositor > 0) endProcess(compositor, SIGTERM);
}
