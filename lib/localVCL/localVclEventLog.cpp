#include "localVclEventLog.h"

#include "localOperatorCompiled.h"
#include "localString.h"

#include <QEvent>

namespace {

// Logging follows the widget events; the higher numbers are internal,
// graphics-view and touch traffic that would drown the log.
constexpr int loggedBelow = 130;

QString named(const char *word, const char *text)
{
    return QStringLiteral("QEvent::") + QLatin1String(word) + QStringLiteral(" (") + QLatin1String(text)
           + QStringLiteral(")");
}

} // namespace

QString localVclEventName(int type)
{
#define EVENT_NAME(word, text)                                                                                       \
    case QEvent::word:                                                                                               \
        return named(#word, text);
    switch (QEvent::Type(type)) {
        EVENT_NAME(None, "Not an event")
        EVENT_NAME(Timer, "Regular timer events")
        EVENT_NAME(MouseButtonPress, "Mouse press")
        EVENT_NAME(MouseButtonRelease, "Mouse release")
        EVENT_NAME(MouseButtonDblClick, "Mouse press again")
        EVENT_NAME(MouseMove, "Mouse move")
        EVENT_NAME(KeyPress, "Key press")
        EVENT_NAME(KeyRelease, "Key release")
        EVENT_NAME(FocusIn, "Widget or Window gains keyboard focus")
        EVENT_NAME(FocusOut, "Widget or Window loses keyboard focus")
        EVENT_NAME(Enter, "Mouse enters widget's boundaries")
        EVENT_NAME(Leave, "Mouse leaves widget's boundaries")
        EVENT_NAME(Paint, "Screen update necessary")
        EVENT_NAME(Move, "Widget's position changed")
        EVENT_NAME(Resize, "Widget's size changed")
        EVENT_NAME(Create, "Widget created")
        EVENT_NAME(Destroy, "Widget destroyed")
        EVENT_NAME(Show, "Widget was shown on screen")
        EVENT_NAME(Hide, "Widget was hidden")
        EVENT_NAME(Close, "Widget was closed")
        EVENT_NAME(Quit, "Application asked to quit")
        EVENT_NAME(ParentChange, "The widget parent has changed")
        EVENT_NAME(ThreadChange, "The object is moved to another thread")
        EVENT_NAME(FocusAboutToChange, "Widget or Window focus is about to change")
        EVENT_NAME(WindowActivate, "Window was activated")
        EVENT_NAME(WindowDeactivate, "Window was deactivated")
        EVENT_NAME(ShowToParent, "A child widget has been shown")
        EVENT_NAME(HideToParent, "A child widget has been hidden")
        EVENT_NAME(Wheel, "Mouse wheel rolled")
        EVENT_NAME(WindowTitleChange, "The window title has changed")
        EVENT_NAME(WindowIconChange, "The window's icon has changed")
        EVENT_NAME(ApplicationWindowIconChange, "The application's icon has changed")
        EVENT_NAME(ApplicationFontChange, "The default application font has changed")
        EVENT_NAME(ApplicationLayoutDirectionChange, "The default application layout direction has changed")
        EVENT_NAME(ApplicationPaletteChange, "The default application palette has changed")
        EVENT_NAME(PaletteChange, "Palette of the widget changed")
        EVENT_NAME(Clipboard, "The clipboard contents have changed")
        EVENT_NAME(Speech, "Reserved for speech input")
        EVENT_NAME(MetaCall, "An asynchronous method invocation")
        EVENT_NAME(SockAct, "Socket activated")
        EVENT_NAME(ShortcutOverride, "Key press in child, for overriding shortcut key handling")
        EVENT_NAME(DeferredDelete, "The object will be deleted after it has cleaned up")
        EVENT_NAME(DragEnter, "The cursor enters a widget during a drag and drop operation")
        EVENT_NAME(DragMove, "A drag and drop operation is in progress")
        EVENT_NAME(DragLeave, "The cursor leaves a widget during a drag and drop operation")
        EVENT_NAME(Drop, "A drag and drop operation is completed")
        EVENT_NAME(DragResponse, "Internal event used by Qt on some platforms")
        EVENT_NAME(ChildAdded, "An object gets a child")
        EVENT_NAME(ChildPolished, "A widget child gets polished")
        EVENT_NAME(ChildRemoved, "An object loses a child")
        EVENT_NAME(ShowWindowRequest, "Internal event for showing a window")
        EVENT_NAME(PolishRequest, "The widget should be polished")
        EVENT_NAME(Polish, "The widget is polished")
        EVENT_NAME(LayoutRequest, "Widget layout needs to be redone")
        EVENT_NAME(UpdateRequest, "The widget should be repainted")
        EVENT_NAME(UpdateLater, "The widget should be queued to be repainted at a later time")
        EVENT_NAME(EmbeddingControl, "Internal event for embedded widgets")
        EVENT_NAME(ActivateControl, "Internal event for activating a control")
        EVENT_NAME(DeactivateControl, "Internal event for deactivating a control")
        EVENT_NAME(ContextMenu, "Context popup menu")
        EVENT_NAME(InputMethod, "An input method is being used")
        EVENT_NAME(TabletMove, "Wacom tablet move")
        EVENT_NAME(LocaleChange, "The system locale has changed")
        EVENT_NAME(LanguageChange, "The application translation changed")
        EVENT_NAME(LayoutDirectionChange, "The direction of layouts changed")
        EVENT_NAME(Style, "Internal style event")
        EVENT_NAME(TabletPress, "Wacom tablet press")
        EVENT_NAME(TabletRelease, "Wacom tablet release")
        EVENT_NAME(OkRequest, "Ok button in decoration pressed")
        EVENT_NAME(HelpRequest, "Help button in decoration pressed")
        EVENT_NAME(IconDrag, "The main icon of a window has been dragged away")
        EVENT_NAME(FontChange, "Widget's font has changed")
        EVENT_NAME(EnabledChange, "Widget's enabled state has changed")
        EVENT_NAME(ActivationChange, "A widget's top-level window activation state has changed")
        EVENT_NAME(StyleChange, "Widget's style has been changed")
        EVENT_NAME(IconTextChange, "Widget's icon text has been changed")
        EVENT_NAME(ModifiedChange, "Widgets modification state has been changed")
        EVENT_NAME(WindowBlocked, "The window is blocked by a modal dialog")
        EVENT_NAME(WindowUnblocked, "The window is unblocked after a modal dialog exited")
        EVENT_NAME(WindowStateChange, "The window's state (minimized, maximized or full-screen) has changed")
        EVENT_NAME(ReadOnlyChange, "Widget's read-only state has changed")
        EVENT_NAME(MouseTrackingChange, "The mouse tracking state has changed")
        EVENT_NAME(ToolTip, "A tooltip was requested")
        EVENT_NAME(WhatsThis, "The widget should reveal \"What's This?\" help")
        EVENT_NAME(StatusTip, "A status tip is requested")
        EVENT_NAME(ActionChanged, "An action has been changed")
        EVENT_NAME(ActionAdded, "A new action has been added")
        EVENT_NAME(ActionRemoved, "An action has been removed")
        EVENT_NAME(FileOpen, "File open request")
        EVENT_NAME(Shortcut, "Key press in child for shortcut key handling")
        EVENT_NAME(WhatsThisClicked, "A link in a widget's \"What's This?\" help was clicked")
        EVENT_NAME(ToolBarChange, "The toolbar button is toggled")
        EVENT_NAME(ApplicationActivate, "The application has been made available to the user")
        EVENT_NAME(ApplicationDeactivate, "The application has been suspended")
        EVENT_NAME(QueryWhatsThis, "The widget should accept the event if it has \"What's This?\" help")
        EVENT_NAME(EnterWhatsThisMode, "Send to toplevel widgets when the application enters \"What's This?\" mode")
        EVENT_NAME(LeaveWhatsThisMode, "Send to toplevel widgets when the application leaves \"What's This?\" mode")
        EVENT_NAME(ZOrderChange, "The widget's z-order has changed")
        EVENT_NAME(HoverEnter, "The mouse cursor enters a hover widget")
        EVENT_NAME(HoverLeave, "The mouse cursor leaves a hover widget")
        EVENT_NAME(HoverMove, "The mouse cursor moves inside a hover widget")
        EVENT_NAME(ParentAboutToChange, "The widget parent is about to change")
        EVENT_NAME(WinEventAct, "A Windows-specific activation event has occurred")
        EVENT_NAME(AcceptDropsChange, "The widget's acceptDrops() property changes")
        EVENT_NAME(ZeroTimerEvent, "Used for zero timer events on Windows")
        EVENT_NAME(KeyboardLayoutChange, "The keyboard layout has changed")
        EVENT_NAME(DynamicPropertyChange, "A dynamic property was added, changed, or removed from the object")
        EVENT_NAME(NonClientAreaMouseMove, "A mouse move occurred outside the client area")
        EVENT_NAME(NonClientAreaMouseButtonPress, "A mouse button press occurred outside the client area")
        EVENT_NAME(NonClientAreaMouseButtonRelease, "A mouse button release occurred outside the client area")
        EVENT_NAME(NonClientAreaMouseButtonDblClick, "A mouse double click occurred outside the client area")
        EVENT_NAME(ContentsRectChange, "The margins of the widget's content rect changed")
        EVENT_NAME(CursorChange, "The widget's cursor has changed")
        EVENT_NAME(ToolTipChange, "The widget's tooltip has changed")
        EVENT_NAME(GrabMouse, "Item gains mouse grab")
        EVENT_NAME(UngrabMouse, "Item loses mouse grab")
        EVENT_NAME(GrabKeyboard, "Item gains keyboard grab")
        EVENT_NAME(UngrabKeyboard, "Item loses keyboard grab")
        EVENT_NAME(TouchBegin, "Beginning of a sequence of touch-screen or track-pad events")
        EVENT_NAME(TouchUpdate, "Touch-screen event")
        EVENT_NAME(TouchEnd, "End of touch-event sequence")
        EVENT_NAME(TouchCancel, "Cancellation of touch-event sequence")
        EVENT_NAME(WinIdChange, "The window system identifier for this native widget has changed")
        EVENT_NAME(Expose, "Sent to a window when its on-screen contents are invalidated")
        EVENT_NAME(InputMethodQuery, "A input method query event")
        EVENT_NAME(OrientationChange, "The screens orientation has changes")
        EVENT_NAME(ThemeChange, "The system theme has changed")
        EVENT_NAME(SockClose, "Socket closed")
        EVENT_NAME(PlatformPanel, "A platform specific panel has been requested")
        EVENT_NAME(ApplicationStateChange, "The state of the application has changed")
        EVENT_NAME(PlatformSurface, "A native platform surface has been created or is about to be destroyed")
        EVENT_NAME(TabletTrackingChange, "The Wacom tablet tracking state has changed")
        EVENT_NAME(User, "User-defined event")
    default:
        break;
    }
#undef EVENT_NAME
    return QStringLiteral("unknown (") + QString::number(type) + QStringLiteral(")");
}

eventFilterForLog::eventFilterForLog(QObject *parent) : QObject(parent) {}

QString eventFilterForLog::logLine(const QObject *object, const QEvent *event)
{
    const int type = int(event->type());
    if (type >= loggedBelow)
        return QString();
    const QString name = object != nullptr ? object->objectName() : QString();
    if (type == QEvent::MouseButtonPress)
        return QStringLiteral("MouseButtonPress  obj [") + name + QStringLiteral("]");
    if (type == QEvent::MouseButtonDblClick)
        return QStringLiteral("MouseButtonDblClick  obj [") + name + QStringLiteral("]");
    return localVclEventName(type) + QStringLiteral(" obj [") + name + QStringLiteral("]");
}

bool eventFilterForLog::eventFilter(QObject *object, QEvent *event)
{
    const QString line = logLine(object, event);
    if (!line.isEmpty()) {
        ++count;
        logWrite(localFromQString(line));
    }
    return false;
}
