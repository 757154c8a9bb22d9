#include "app/StartupNotification.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace {

constexpr qsizetype partSize = 20; // the data of a client message
constexpr std::uint32_t sourceIsApplication = 1;

using AtomReply = std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)>;

xcb_atom_t atomOf(xcb_connection_t* connection, const QByteArray& name)
{
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.constData());
    const AtomReply reply(xcb_intern_atom_reply(connection, cookie, nullptr), &std::free);
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

xcb_window_t rootOf(xcb_connection_t* connection)
{
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

xcb_client_message_event_t messageTo(xcb_window_t window, xcb_atom_t type, std::uint8_t format)
{
    xcb_client_message_event_t message {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = format;
    message.window = window;
    message.type = type;
    return message;
}

void sendToRoot(xcb_connection_t* connection, const xcb_client_message_event_t& message, std::uint32_t eventMask)
{
    xcb_send_event(connection, 0, rootOf(connection), eventMask, reinterpret_cast<const char*>(&message));
}

void endLaunch(xcb_connection_t* connection, xcb_window_t window, const QByteArray& startupId)
{
    xcb_atom_t type = atomOf(connection, "_NET_STARTUP_INFO_BEGIN");
    for (const QByteArray& part : launchEndParts(startupId)) {
        xcb_client_message_event_t message = messageTo(window, type, 8);
        std::copy(part.begin(), part.end(), message.data.data8);
        sendToRoot(connection, message, XCB_EVENT_MASK_PROPERTY_CHANGE);
        type = atomOf(connection, "_NET_STARTUP_INFO");
    }
}

void activate(xcb_connection_t* connection, xcb_window_t window, std::uint32_t time)
{
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atomOf(connection, "_NET_WM_USER_TIME"),
        XCB_ATOM_CARDINAL, 32, 1, &time);
    xcb_client_message_event_t message = messageTo(window, atomOf(connection, "_NET_ACTIVE_WINDOW"), 32);
    message.data.data32[0] = sourceIsApplication;
    message.data.data32[1] = time;
    sendToRoot(connection, message, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT);
}

} // namespace

std::optional<std::uint32_t> launchTime(const QByteArray& startupId)
{
    const QByteArray mark = "_TIME";
    const qsizetype position = startupId.lastIndexOf(mark);
    bool isNumber = false;
    const std::uint32_t time = startupId.mid(position + mark.size()).toUInt(&isNumber);
    return position >= 0 && isNumber ? std::optional(time) : std::nullopt;
}

std::vector<QByteArray> launchEndParts(const QByteArray& startupId)
{
    QByteArray quoted = startupId;
    quoted.replace('\\', "\\\\").replace('"', "\\\"");
    const QByteArray message = "remove: ID=\"" + quoted + '"' + '\0';
    std::vector<QByteArray> parts;
    for (qsizetype begin = 0; begin < message.size(); begin += partSize)
        parts.push_back(message.mid(begin, partSize));
    return parts;
}

void activateForLaunch(const QWindow& window, const QByteArray& startupId)
{
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t* const connection
        = x11 != nullptr ? x11->connection() : nullptr; // the offscreen platform has none
    if (startupId.isEmpty() || connection == nullptr)
        return;
    const auto id = static_cast<xcb_window_t>(window.winId());
    if (const auto time = launchTime(startupId))
        activate(connection, id, *time);
    endLaunch(connection, id, startupId);
    xcb_flush(connection);
}
