/*
 * Drags files from a window of its own to a point of the screen and drops them there, as a file
 * manager does: with a real pointer (XTest) and the XDND protocol, version 5.
 *
 *   xdnd_source [--alt] [--hold MILLISECONDS] X Y FILE...
 *
 *   --alt    the Alt key is down from before the drop to after its end
 *   --hold   how long the pointer rests on the point before the button is let go (default 300)
 *   FILE     absolute paths of this machine
 *
 * The display is DISPLAY's. The source window is small, stands in the left top corner (in the left
 * bottom one when the point is near there) and never takes the focus.
 *
 * Exit codes: 0 the target took the files, 2 bad arguments, 3 no display or no XTest, 4 no window
 * under the point takes drops, 5 the target refused, 6 the target did not answer in time.
 */
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <poll.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

enum {
  WindowSide = 24,  /* pixels */
  MotionSteps = 24, /* of the way from the window to the point */
  StepPause = 10,   /* milliseconds */
  AnswerLimit = 15000,
  Version = 5,
  ExitArguments = 2,
  ExitDisplay = 3,
  ExitNoTarget = 4,
  ExitRefused = 5,
  ExitSilent = 6
};

enum {
  AtomAware,
  AtomEnter,
  AtomPosition,
  AtomStatus,
  AtomLeave,
  AtomDrop,
  AtomFinished,
  AtomSelection,
  AtomActionCopy,
  AtomUriList,
  AtomTargets,
  AtomCount
};
static char* const atomNames[AtomCount] = {
    "XdndAware",    "XdndEnter",     "XdndPosition",   "XdndStatus",    "XdndLeave", "XdndDrop",
    "XdndFinished", "XdndSelection", "XdndActionCopy", "text/uri-list", "TARGETS"};

static Display* display;
static Atom atoms[AtomCount];
static Window source;
static Window target;  /* None while the pointer is on nothing that takes drops */
static int isAccepted; /* the target's last answer */
static int isAnswered; /* the last position has been answered */
static int isFinished;
static char* uriList; /* what is dragged */

static long long now(void) {
  struct timespec moment;
  clock_gettime(CLOCK_MONOTONIC, &moment);
  return moment.tv_sec * 1000LL + moment.tv_nsec / 1000000;
}

/* "file://" and the path, with every byte but the plain ones as %XX, one file a line. */
static char* makeUriList(char** paths, int count) {
  static const char plain[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789/-_.~";
  size_t room = 1;
  for (int i = 0; i < count; ++i) room += strlen(paths[i]) * 3 + 16;
  char* list = malloc(room);
  if (!list) exit(ExitArguments);
  char* end = list;
  for (int i = 0; i < count; ++i) {
    end += sprintf(end, "file://");
    for (const unsigned char* byte = (const unsigned char*)paths[i]; *byte; ++byte)
      end += strchr(plain, *byte) ? sprintf(end, "%c", *byte) : sprintf(end, "%%%02X", *byte);
    end += sprintf(end, "\r\n");
  }
  return list;
}

/* The topmost window under the point that takes drops, looked for from the root downward. */
static Window findTarget(int x, int y) {
  Window root = DefaultRootWindow(display);
  Window window = root;
  for (;;) {
    Window child = None;
    int childX, childY;
    if (!XTranslateCoordinates(display, root, window, x, y, &childX, &childY, &child)) return None;
    if (child == None || child == source) return None;
    Atom type = None;
    int format;
    unsigned long items, rest;
    unsigned char* data = NULL;
    XGetWindowProperty(display, child, atoms[AtomAware], 0, 1, False, AnyPropertyType, &type,
                       &format, &items, &rest, &data);
    if (data) XFree(data);
    if (type != None) return child;
    window = child;
  }
}

static void sendToTarget(Atom message, long second, long third, long fourth, long fifth) {
  XEvent event;
  memset(&event, 0, sizeof event);
  event.xclient.type = ClientMessage;
  event.xclient.window = target;
  event.xclient.message_type = message;
  event.xclient.format = 32;
  event.xclient.data.l[0] = (long)source;
  event.xclient.data.l[1] = second;
  event.xclient.data.l[2] = third;
  event.xclient.data.l[3] = fourth;
  event.xclient.data.l[4] = fifth;
  XSendEvent(display, target, False, NoEventMask, &event);
  XFlush(display);
}

/* The target asks for what is dragged. */
static void serveRequest(const XSelectionRequestEvent* request) {
  XEvent answer;
  memset(&answer, 0, sizeof answer);
  answer.xselection.type = SelectionNotify;
  answer.xselection.requestor = request->requestor;
  answer.xselection.selection = request->selection;
  answer.xselection.target = request->target;
  answer.xselection.time = request->time;
  answer.xselection.property = request->property;
  if (request->target == atoms[AtomUriList])
    XChangeProperty(display, request->requestor, request->property, atoms[AtomUriList], 8,
                    PropModeReplace, (unsigned char*)uriList, (int)strlen(uriList));
  else if (request->target == atoms[AtomTargets])
    XChangeProperty(display, request->requestor, request->property, XA_ATOM, 32, PropModeReplace,
                    (unsigned char*)&atoms[AtomUriList], 1);
  else
    answer.xselection.property = None;
  XSendEvent(display, request->requestor, False, NoEventMask, &answer);
  XFlush(display);
}

/* A window that takes drops has gone: there is nobody to wait for. */
static void forgetTarget(void) {
  target = None;
  isAccepted = 0;
  isAnswered = isFinished = 1;
}

/* Requests to windows that have just gone are no fault of ours. */
static int ignoreError(Display* unused, XErrorEvent* error) {
  (void)unused;
  if (error->resourceid == target) forgetTarget();
  return 0;
}

static void serveEvents(void) {
  while (XPending(display)) {
    XEvent event;
    XNextEvent(display, &event);
    if (event.type == DestroyNotify && event.xdestroywindow.window == target) {
      forgetTarget();
    } else if (event.type == SelectionRequest) {
      serveRequest(&event.xselectionrequest);
    } else if (event.type == ClientMessage && event.xclient.message_type == atoms[AtomStatus]) {
      isAccepted = (event.xclient.data.l[1] & 1) != 0;
      isAnswered = 1;
    } else if (event.type == ClientMessage && event.xclient.message_type == atoms[AtomFinished]) {
      isFinished = 1;
    }
  }
}

/* Serves events until the flag is set, or for so long; gives the flag. */
static int serveUntil(const int* flag, long long milliseconds) {
  const long long end = now() + milliseconds;
  for (;;) {
    serveEvents();
    if (flag && *flag) return 1;
    const long long left = end - now();
    if (left <= 0) return flag ? *flag : 0;
    struct pollfd connection = {ConnectionNumber(display), POLLIN, 0};
    poll(&connection, 1, (int)(left < 50 ? left : 50));
  }
}

/* Moves the pointer, tells the window under it, and waits for what it says. */
static void moveTo(int x, int y) {
  XTestFakeMotionEvent(display, -1, x, y, CurrentTime);
  XSync(display, False);
  const Window found = findTarget(x, y);
  if (found != target) {
    if (target != None) sendToTarget(atoms[AtomLeave], 0, 0, 0, 0);
    target = found;
    isAccepted = 0;
    if (target != None) {
      XSelectInput(display, target, StructureNotifyMask);
      sendToTarget(atoms[AtomEnter], Version << 24, (long)atoms[AtomUriList], None, None);
    }
  }
  if (target != None) {
    isAnswered = 0;
    sendToTarget(atoms[AtomPosition], 0, ((long)x << 16) | y, CurrentTime,
                 (long)atoms[AtomActionCopy]);
    serveUntil(&isAnswered, AnswerLimit);
  }
}

static void makeSource(int x, int y) {
  const int height = DisplayHeight(display, DefaultScreen(display));
  const int isNearCorner = x < 4 * WindowSide && y < 4 * WindowSide;
  XSetWindowAttributes attributes;
  memset(&attributes, 0, sizeof attributes);
  attributes.override_redirect = True; /* no window manager gives it the focus */
  attributes.background_pixel = WhitePixel(display, DefaultScreen(display));
  attributes.event_mask = ButtonPressMask | ButtonReleaseMask | StructureNotifyMask;
  source =
      XCreateWindow(display, DefaultRootWindow(display), 0, isNearCorner ? height - WindowSide : 0,
                    WindowSide, WindowSide, 0, CopyFromParent, InputOutput, CopyFromParent,
                    CWOverrideRedirect | CWBackPixel | CWEventMask, &attributes);
  XMapRaised(display, source);
  XEvent event;
  XWindowEvent(display, source, StructureNotifyMask, &event);
  XSetSelectionOwner(display, atoms[AtomSelection], source, CurrentTime);
  XSync(display, False);
}

/* From the middle of the source window to the point. */
static void drag(int x, int y) {
  Window child;
  int startX, startY;
  XTranslateCoordinates(display, source, DefaultRootWindow(display), WindowSide / 2, WindowSide / 2,
                        &startX, &startY, &child);
  XTestFakeMotionEvent(display, -1, startX, startY, CurrentTime);
  XTestFakeButtonEvent(display, 1, True, CurrentTime);
  XSync(display, False);
  for (int step = 1; step <= MotionSteps; ++step) {
    moveTo(startX + (x - startX) * step / MotionSteps, startY + (y - startY) * step / MotionSteps);
    serveUntil(NULL, StepPause);
  }
}

/* Lets go over the point: what the target said of its last position counts. */
static int drop(int x, int y, int hold) {
  serveUntil(NULL, hold);
  moveTo(x, y);
  XTestFakeButtonEvent(display, 1, False, CurrentTime);
  XSync(display, False);
  if (target == None) return ExitNoTarget;
  if (!isAnswered) return ExitSilent;
  if (!isAccepted) {
    sendToTarget(atoms[AtomLeave], 0, 0, 0, 0);
    return ExitRefused;
  }
  isFinished = 0;
  sendToTarget(atoms[AtomDrop], 0, CurrentTime, 0, 0);
  return serveUntil(&isFinished, AnswerLimit) && target != None ? 0 : ExitSilent;
}

static int readNumber(const char* text, int* number) {
  char* end;
  const long value = strtol(text, &end, 10);
  *number = (int)value;
  return end != text && *end == 0 && value >= 0 && value < 32768;
}

int main(int argc, char** argv) {
  int isAlt = 0, hold = 300, first = 1, x, y;
  for (; first < argc && strncmp(argv[first], "--", 2) == 0; ++first) {
    if (strcmp(argv[first], "--alt") == 0)
      isAlt = 1;
    else if (strcmp(argv[first], "--hold") != 0 || ++first >= argc ||
             !readNumber(argv[first], &hold))
      return ExitArguments;
  }
  if (argc - first < 3 || !readNumber(argv[first], &x) || !readNumber(argv[first + 1], &y)) {
    fprintf(stderr, "usage: xdnd_source [--alt] [--hold MILLISECONDS] X Y FILE...\n");
    return ExitArguments;
  }
  int unused;
  display = XOpenDisplay(NULL);
  if (!display || !XTestQueryExtension(display, &unused, &unused, &unused, &unused))
    return ExitDisplay;
  XSetErrorHandler(ignoreError);
  XInternAtoms(display, (char**)atomNames, AtomCount, False, atoms);
  uriList = makeUriList(argv + first + 2, argc - first - 2);

  const KeyCode alt = XKeysymToKeycode(display, XK_Alt_L);
  makeSource(x, y);
  drag(x, y);
  if (isAlt) XTestFakeKeyEvent(display, alt, True, CurrentTime);
  const int code = drop(x, y, hold);
  if (isAlt) XTestFakeKeyEvent(display, alt, False, CurrentTime);
  XSync(display, False);
  XDestroyWindow(display, source);
  XCloseDisplay(display);
  free(uriList);
  return code;
}
