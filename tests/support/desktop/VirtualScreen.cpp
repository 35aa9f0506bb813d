#include "VirtualScreen.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <png.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace test {

namespace {

int channelDistance(std::uint32_t a, std::uint32_t b) {
    int greatest = 0;
    for (const int shift : {0, 8, 16}) {
        const int difference = static_cast<int>((a >> shift) & 0xFF) - static_cast<int>((b >> shift) & 0xFF);
        greatest = std::max(greatest, std::abs(difference));
    }
    return greatest;
}

}  // namespace

bool isNear(std::uint32_t a, std::uint32_t b, int tolerance) {
    return channelDistance(a, b) <= tolerance;
}

Picture Picture::ofPng(const std::filesystem::path& file, std::uint32_t ground) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    const auto channel = [ground](int shift) { return static_cast<png_byte>((ground >> shift) & 0xFF); };
    const png_color color{channel(16), channel(8), channel(0)};
    std::vector<png_byte> bytes;
    if (png_image_begin_read_from_file(&image, file.c_str())) {
        image.format = PNG_FORMAT_RGB;
        bytes.resize(PNG_IMAGE_SIZE(image));
        png_image_finish_read(&image, &color, bytes.data(), 0, nullptr);
    }
    if (PNG_IMAGE_FAILED(image)) throw std::runtime_error(file.string() + ": " + image.message);
    Picture picture{static_cast<int>(image.width), static_cast<int>(image.height), {}};
    for (std::size_t i = 0; i + 2 < bytes.size(); i += 3)
        picture.pixels.push_back(std::uint32_t{bytes[i]} << 16 | std::uint32_t{bytes[i + 1]} << 8 |
                                 bytes[i + 2]);
    return picture;
}

Picture Picture::part(int x, int y, int partWidth, int partHeight) const {
    Picture result{partWidth, partHeight, {}};
    for (int row = y; row < y + partHeight; ++row) {
        for (int column = x; column < x + partWidth; ++column)
            result.pixels.push_back(at(column, row));
    }
    return result;
}

int Picture::differences(const Picture& other, int tolerance) const {
    if (width != other.width || height != other.height) return std::max(width * height, 1);
    int count = 0;
    for (std::size_t i = 0; i < pixels.size(); ++i)
        count += isNear(pixels[i], other.pixels[i], tolerance) ? 0 : 1;
    return count;
}

struct VirtualScreen::Connection {
    explicit Connection(const std::string& name) : display(XOpenDisplay(name.c_str())) {
        if (!display) throw std::runtime_error("the virtual screen does not answer");
        // A window may be gone before it is asked about.
        XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
        // A compositor inside the screen only uses atoms that exist, as they do on every real desktop.
        for (const char* atom : {"WM_PROTOCOLS", "WM_DELETE_WINDOW", "_NET_WM_NAME", "UTF8_STRING"})
            XInternAtom(display, atom, False);
        XSync(display, False);
    }
    ~Connection() { XCloseDisplay(display); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    ::Window root() const { return DefaultRootWindow(display); }
    Atom atom(const char* name) const { return XInternAtom(display, name, False); }

    /// The bytes, or the numbers, of a property; Xlib gives numbers of 32 bits as longs.
    template <class Element>
    std::vector<Element> property(::Window window, const char* name, Atom wanted, int bits) const {
        Atom type = None;
        int format = 0;
        unsigned long count = 0, rest = 0;
        unsigned char* data = nullptr;
        XGetWindowProperty(display, window, atom(name), 0, 256, False, wanted, &type, &format, &count, &rest,
                           &data);
        const auto* elements = reinterpret_cast<const Element*>(data);
        std::vector<Element> result;
        if (data && format == bits) result.assign(elements, elements + count);
        if (data) XFree(data);
        return result;
    }

    std::string text(::Window window, const char* name) const {
        const auto bytes = property<char>(window, name, AnyPropertyType, 8);
        return {bytes.begin(), bytes.end()};
    }

    std::string title(::Window window) const {
        const std::string name = text(window, "_NET_WM_NAME");
        return name.empty() ? text(window, "WM_NAME") : name;
    }

    void collect(::Window parent, std::vector<VirtualScreen::Window>& found) const {
        ::Window ignoredRoot, ignoredParent, *children = nullptr;
        unsigned count = 0;
        if (!XQueryTree(display, parent, &ignoredRoot, &ignoredParent, &children, &count)) return;
        for (unsigned i = 0; i < count; ++i) {
            XWindowAttributes attributes;
            if (!XGetWindowAttributes(display, children[i], &attributes)) continue;
            const std::string name = title(children[i]);
            if (attributes.map_state == IsViewable && !name.empty()) {
                int x = 0, y = 0;
                ::Window ignored;
                XTranslateCoordinates(display, children[i], root(), 0, 0, &x, &y, &ignored);
                found.push_back({children[i], name, x, y, attributes.width, attributes.height});
            } else if (attributes.map_state == IsViewable) {
                collect(children[i], found);
            }
        }
        if (children) XFree(children);
    }

    Display* display;
};

VirtualScreen::VirtualScreen(int width, int height, const Variables& variables,
                             const std::filesystem::path& folder)
    : server_(std::make_unique<ChildProcess>(
          std::vector<std::string>{"Xvfb", "-displayfd", "1", "-screen", "0",
                                   std::to_string(width) + "x" + std::to_string(height) + "x24", "-nolisten",
                                   "tcp", "-noreset"},
          variables, folder / "xvfb.log")) {
    const auto number = server_->waitForLine("");
    if (!number) throw std::runtime_error("no virtual screen");
    name_ = ":" + *number;
    connection_ = std::make_unique<Connection>(name_);
    movePointer(width / 2, height - 1);
}

VirtualScreen::~VirtualScreen() = default;

Picture VirtualScreen::picture() const {
    XWindowAttributes attributes;
    XGetWindowAttributes(connection_->display, connection_->root(), &attributes);
    const auto width = static_cast<unsigned>(attributes.width),
               height = static_cast<unsigned>(attributes.height);
    XImage* image =
        XGetImage(connection_->display, connection_->root(), 0, 0, width, height, AllPlanes, ZPixmap);
    Picture picture{attributes.width, attributes.height, {}};
    picture.pixels.reserve(std::size_t{width} * height);
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x)
            picture.pixels.push_back(static_cast<std::uint32_t>(XGetPixel(image, x, y) & 0xFFFFFF));
    }
    XDestroyImage(image);
    return picture;
}

void VirtualScreen::fillBackground(std::uint32_t color) {
    Display* display = connection_->display;
    const ::Window root = connection_->root();
    const int screen = DefaultScreen(display);
    const Pixmap pixmap =
        XCreatePixmap(display, root, 8, 8, static_cast<unsigned>(DefaultDepth(display, screen)));
    const GC context = XCreateGC(display, pixmap, 0, nullptr);
    XSetForeground(display, context, color);
    XFillRectangle(display, pixmap, context, 0, 0, 8, 8);
    XFreeGC(display, context);
    XSetWindowBackgroundPixmap(display, root, pixmap);
    // Where compositors look for it.
    XChangeProperty(display, root, connection_->atom("_XROOTPMAP_ID"), XA_PIXMAP, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(&pixmap), 1);
    XClearWindow(display, root);
    XSync(display, False);
}

void VirtualScreen::movePointer(int x, int y) {
    XTestFakeMotionEvent(connection_->display, 0, x, y, CurrentTime);
    XSync(connection_->display, False);
}

void VirtualScreen::press(int button) {
    XTestFakeButtonEvent(connection_->display, static_cast<unsigned>(button), True, CurrentTime);
    XSync(connection_->display, False);
}

void VirtualScreen::release(int button) {
    XTestFakeButtonEvent(connection_->display, static_cast<unsigned>(button), False, CurrentTime);
    XSync(connection_->display, False);
}

void VirtualScreen::click(int x, int y, int button) {
    movePointer(x, y);
    press(button);
    release(button);
}

void VirtualScreen::key(const std::string& keysym) {
    const KeyCode code = XKeysymToKeycode(connection_->display, XStringToKeysym(keysym.c_str()));
    XTestFakeKeyEvent(connection_->display, code, True, CurrentTime);
    XTestFakeKeyEvent(connection_->display, code, False, CurrentTime);
    XSync(connection_->display, False);
}

std::vector<VirtualScreen::Window> VirtualScreen::windows() const {
    std::vector<Window> found;
    connection_->collect(connection_->root(), found);
    return found;
}

std::vector<VirtualScreen::Window> VirtualScreen::windowsTitled(const std::string& title) const {
    auto found = windows();
    std::erase_if(found, [&](const Window& window) { return window.title != title; });
    return found;
}

std::size_t VirtualScreen::windowCount() const {
    ::Window ignoredRoot, ignoredParent, *children = nullptr;
    unsigned count = 0;
    XQueryTree(connection_->display, connection_->root(), &ignoredRoot, &ignoredParent, &children, &count);
    const auto isMapped = [this](::Window window) {
        XWindowAttributes attributes;
        return XGetWindowAttributes(connection_->display, window, &attributes) &&
               attributes.map_state == IsViewable && attributes.width > 20 && attributes.height > 20;
    };
    const auto mapped = std::count_if(children, children + count, isMapped);
    if (children) XFree(children);
    return static_cast<std::size_t>(mapped);
}

bool VirtualScreen::isFocused(unsigned long window) const {
    ::Window focused = None;
    int revert = 0;
    XGetInputFocus(connection_->display, &focused, &revert);
    while (focused != None && focused != PointerRoot && focused != window) {
        ::Window root, parent = None, *children = nullptr;
        unsigned count = 0;
        if (!XQueryTree(connection_->display, focused, &root, &parent, &children, &count)) return false;
        if (children) XFree(children);
        focused = parent;
    }
    return focused == window;
}

void VirtualScreen::moveWindow(unsigned long window, int x, int y) {
    XMoveWindow(connection_->display, window, x, y);
    XSync(connection_->display, False);
}

void VirtualScreen::focusWindow(unsigned long window) {
    XSetInputFocus(connection_->display, window, RevertToPointerRoot, CurrentTime);
    XSync(connection_->display, False);
}

void VirtualScreen::closeWindow(unsigned long window) {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = connection_->atom("WM_PROTOCOLS");
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(connection_->atom("WM_DELETE_WINDOW"));
    XSendEvent(connection_->display, window, False, NoEventMask, &event);
    XSync(connection_->display, False);
}

std::vector<std::string> VirtualScreen::atoms(unsigned long window, const std::string& property) const {
    std::vector<std::string> names;
    for (const Atom atom : connection_->property<Atom>(window, property.c_str(), XA_ATOM, 32)) {
        char* name = XGetAtomName(connection_->display, atom);
        names.emplace_back(name);
        XFree(name);
    }
    return names;
}

bool VirtualScreen::hasProperty(const std::string& property) const {
    int count = 0;
    Atom* properties = XListProperties(connection_->display, connection_->root(), &count);
    const bool isThere =
        std::find(properties, properties + count, connection_->atom(property.c_str())) != properties + count;
    if (properties) XFree(properties);
    return isThere;
}

bool VirtualScreen::isBlended() const {
    return XGetSelectionOwner(connection_->display, connection_->atom("_NET_WM_CM_S0")) != None;
}

}  // namespace test
