"""Close requests as a window manager sends them: the client message
WM_PROTOCOLS / WM_DELETE_WINDOW, which is what the title bar's close button
and a close from outside come down to. Talks to libX11 through ctypes, so no
tool beyond the X library itself is needed."""

import ctypes
import ctypes.util

_x11 = ctypes.CDLL(ctypes.util.find_library("X11") or "libX11.so.6")

Window = ctypes.c_ulong
Atom = ctypes.c_ulong

_x11.XOpenDisplay.restype = ctypes.c_void_p
_x11.XOpenDisplay.argtypes = [ctypes.c_char_p]
_x11.XCloseDisplay.argtypes = [ctypes.c_void_p]
_x11.XDefaultRootWindow.restype = Window
_x11.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
_x11.XInternAtom.restype = Atom
_x11.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
_x11.XQueryTree.argtypes = [ctypes.c_void_p, Window, ctypes.POINTER(Window), ctypes.POINTER(Window),
                            ctypes.POINTER(ctypes.POINTER(Window)), ctypes.POINTER(ctypes.c_uint)]
_x11.XGetWindowProperty.argtypes = [ctypes.c_void_p, Window, Atom, ctypes.c_long, ctypes.c_long, ctypes.c_int,
                                    Atom, ctypes.POINTER(Atom), ctypes.POINTER(ctypes.c_int),
                                    ctypes.POINTER(ctypes.c_ulong), ctypes.POINTER(ctypes.c_ulong),
                                    ctypes.POINTER(ctypes.c_void_p)]
_x11.XFree.argtypes = [ctypes.c_void_p]
_x11.XSendEvent.argtypes = [ctypes.c_void_p, Window, ctypes.c_int, ctypes.c_long, ctypes.c_void_p]
_x11.XFlush.argtypes = [ctypes.c_void_p]
_x11.XSync.argtypes = [ctypes.c_void_p, ctypes.c_int]

AnyPropertyType = 0
ClientMessage = 33
IsViewable = 2


class _ClientMessageData(ctypes.Union):
    _fields_ = [("b", ctypes.c_char * 20), ("s", ctypes.c_short * 10), ("l", ctypes.c_long * 5)]


class _XClientMessageEvent(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", Window), ("message_type", Atom),
                ("format", ctypes.c_int), ("data", _ClientMessageData)]


class _XEvent(ctypes.Union):
    _fields_ = [("xclient", _XClientMessageEvent), ("pad", ctypes.c_long * 24)]


class _XWindowAttributes(ctypes.Structure):
    _fields_ = [("x", ctypes.c_int), ("y", ctypes.c_int), ("width", ctypes.c_int), ("height", ctypes.c_int),
                ("border_width", ctypes.c_int), ("depth", ctypes.c_int), ("visual", ctypes.c_void_p),
                ("root", Window), ("class", ctypes.c_int), ("bit_gravity", ctypes.c_int),
                ("win_gravity", ctypes.c_int), ("backing_store", ctypes.c_int),
                ("backing_planes", ctypes.c_ulong), ("backing_pixel", ctypes.c_ulong),
                ("save_under", ctypes.c_int), ("colormap", ctypes.c_ulong),
                ("map_installed", ctypes.c_int), ("map_state", ctypes.c_int),
                ("all_event_masks", ctypes.c_long), ("your_event_mask", ctypes.c_long),
                ("do_not_propagate_mask", ctypes.c_long), ("override_redirect", ctypes.c_int),
                ("screen", ctypes.c_void_p)]


_x11.XGetWindowAttributes.argtypes = [ctypes.c_void_p, Window, ctypes.POINTER(_XWindowAttributes)]
_x11.XResizeWindow.argtypes = [ctypes.c_void_p, Window, ctypes.c_uint, ctypes.c_uint]


class XDisplay:
    def __init__(self, display):
        self.handle = _x11.XOpenDisplay(display.encode())
        if not self.handle:
            raise RuntimeError("cannot open display %s" % display)

    def close(self):
        if self.handle:
            _x11.XCloseDisplay(self.handle)
            self.handle = None

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        self.close()

    def atom(self, name):
        return _x11.XInternAtom(self.handle, name.encode(), 0)

    def _property(self, window, name):
        actual_type = Atom()
        actual_format = ctypes.c_int()
        count = ctypes.c_ulong()
        after = ctypes.c_ulong()
        data = ctypes.c_void_p()
        status = _x11.XGetWindowProperty(self.handle, window, self.atom(name), 0, 1024, 0, AnyPropertyType,
                                         ctypes.byref(actual_type), ctypes.byref(actual_format),
                                         ctypes.byref(count), ctypes.byref(after), ctypes.byref(data))
        if status != 0 or not data.value:
            return None
        try:
            if actual_format.value == 8:
                return ctypes.string_at(data.value, count.value)
            if actual_format.value == 32:
                return list((ctypes.c_ulong * count.value).from_address(data.value))
            return None
        finally:
            _x11.XFree(data)

    def top_level_windows(self):
        root = _x11.XDefaultRootWindow(self.handle)
        root_return, parent = Window(), Window()
        children = ctypes.POINTER(Window)()
        count = ctypes.c_uint()
        if not _x11.XQueryTree(self.handle, root, ctypes.byref(root_return), ctypes.byref(parent),
                               ctypes.byref(children), ctypes.byref(count)):
            return []
        try:
            return [children[i] for i in range(count.value)]
        finally:
            if children:
                _x11.XFree(children)

    def title(self, window):
        raw = self._property(window, "_NET_WM_NAME") or self._property(window, "WM_NAME")
        return raw.decode("utf-8", "replace") if raw is not None else None

    def pid(self, window):
        value = self._property(window, "_NET_WM_PID")
        return value[0] if value else None

    def viewable(self, window):
        attributes = _XWindowAttributes()
        if not _x11.XGetWindowAttributes(self.handle, window, ctypes.byref(attributes)):
            return False
        return attributes.map_state == IsViewable

    def size(self, window):
        attributes = _XWindowAttributes()
        if not _x11.XGetWindowAttributes(self.handle, window, ctypes.byref(attributes)):
            return None
        return attributes.width, attributes.height

    def resize(self, window, width, height):
        """Resizes the window from outside, as dragging its border does."""
        _x11.XResizeWindow(self.handle, window, width, height)
        _x11.XSync(self.handle, 0)

    def find_window(self, pid, title):
        """The top-level window of the process with that title, or None."""
        for window in self.top_level_windows():
            if self.pid(window) == pid and self.title(window) == title:
                return window
        return None

    def send_delete_window(self, window):
        """Asks the window to close, as a window manager's close button does."""
        event = _XEvent()
        event.xclient.type = ClientMessage
        event.xclient.send_event = 1
        event.xclient.window = window
        event.xclient.message_type = self.atom("WM_PROTOCOLS")
        event.xclient.format = 32
        event.xclient.data.l[0] = self.atom("WM_DELETE_WINDOW")
        event.xclient.data.l[1] = 0  # CurrentTime
        if not _x11.XSendEvent(self.handle, window, 0, 0, ctypes.byref(event)):
            raise RuntimeError("XSendEvent failed")
        _x11.XSync(self.handle, 0)

    def supports_delete_window(self, window):
        protocols = self._property(window, "WM_PROTOCOLS") or []
        return self.atom("WM_DELETE_WINDOW") in protocols
