/* SPDX-License-Identifier: MIT */
/* Names that the headers of Qt, X11 and GLib define as macros, each as it is there. Programs include those before
   ours, so no public name may be one of these. NULL and errno are macros of everybody and not listed. */

/* Qt, without QT_NO_KEYWORDS */
#define signals public
#define slots
#define emit
#define foreach(variable, container) for (variable : container)
#define forever for (;;)
#define Q_SIGNALS public
#define Q_SLOTS
#define Q_EMIT
#define Q_FOREACH(variable, container) for (variable : container)
#define Q_FOREVER for (;;)
#define Q_OBJECT
#define Q_GADGET
#define Q_PROPERTY(text)
#define Q_ENUM(type)
#define Q_FLAG(type)
#define Q_INVOKABLE
#define Q_UNUSED(x) (void)x;
#define Q_ASSERT(condition) ((void)0)
#define SIGNAL(a) "2" #a
#define SLOT(a) "1" #a
#define METHOD(a) "0" #a

/* X.h */
#define None 0L
#define ParentRelative 1L
#define CopyFromParent 0L
#define PointerWindow 0L
#define InputFocus 1L
#define PointerRoot 1L
#define AnyPropertyType 0L
#define AnyKey 0L
#define AnyButton 0L
#define AllTemporary 0L
#define CurrentTime 0L
#define NoSymbol 0L
#define NoEventMask 0L
#define KeyPressMask (1L << 0)
#define KeyReleaseMask (1L << 1)
#define ButtonPressMask (1L << 2)
#define PropertyChangeMask (1L << 22)
#define KeyPress 2
#define KeyRelease 3
#define ButtonPress 4
#define ButtonRelease 5
#define MotionNotify 6
#define EnterNotify 7
#define LeaveNotify 8
#define FocusIn 9
#define FocusOut 10
#define KeymapNotify 11
#define Expose 12
#define NoExpose 14
#define VisibilityNotify 15
#define CreateNotify 16
#define DestroyNotify 17
#define UnmapNotify 18
#define MapNotify 19
#define MapRequest 20
#define ReparentNotify 21
#define ConfigureNotify 22
#define GravityNotify 24
#define CirculateNotify 26
#define PropertyNotify 28
#define SelectionClear 29
#define SelectionRequest 30
#define SelectionNotify 31
#define ColormapNotify 32
#define ClientMessage 33
#define MappingNotify 34
#define GenericEvent 35
#define LASTEvent 36
#define ShiftMask (1 << 0)
#define LockMask (1 << 1)
#define ControlMask (1 << 2)
#define Mod1Mask (1 << 3)
#define Button1 1
#define Button2 2
#define Button3 3
#define AnyModifier (1 << 15)
#define NotifyNormal 0
#define NotifyGrab 1
#define NotifyHint 1
#define GrabModeSync 0
#define GrabModeAsync 1
#define GrabSuccess 0
#define AlreadyGrabbed 1
#define GrabInvalidTime 2
#define GrabNotViewable 3
#define GrabFrozen 4
#define AsyncPointer 0
#define SyncPointer 1
#define Success 0
#define BadRequest 1
#define BadValue 2
#define BadWindow 3
#define BadPixmap 4
#define BadAtom 5
#define BadMatch 8
#define BadAccess 10
#define BadAlloc 11
#define BadName 15
#define BadLength 16
#define BadImplementation 17
#define InputOutput 1
#define InputOnly 2
#define ForgetGravity 0
#define NorthGravity 2
#define CenterGravity 5
#define StaticGravity 10
#define NotUseful 0
#define WhenMapped 1
#define Always 2
#define IsUnmapped 0
#define IsUnviewable 1
#define IsViewable 2
#define SetModeInsert 0
#define SetModeDelete 1
#define DestroyAll 0
#define RetainPermanent 1
#define RetainTemporary 2
#define Above 0
#define Below 1
#define TopIf 2
#define BottomIf 3
#define Opposite 4
#define RaiseLowest 0
#define LowerHighest 1
#define PropModeReplace 0
#define PropModePrepend 1
#define PropModeAppend 2
#define GXclear 0x0
#define GXcopy 0x3
#define GXset 0xf
#define LineSolid 0
#define LineOnOffDash 1
#define CapButt 1
#define CapRound 2
#define JoinMiter 0
#define JoinRound 1
#define FillSolid 0
#define FillTiled 1
#define EvenOddRule 0
#define WindingRule 1
#define ClipByChildren 0
#define IncludeInferiors 1
#define Unsorted 0
#define YSorted 1
#define YXSorted 2
#define YXBanded 3
#define CoordModeOrigin 0
#define CoordModePrevious 1
#define Complex 0
#define Nonconvex 1
#define Convex 2
#define ArcChord 0
#define ArcPieSlice 1
#define FontLeftToRight 0
#define FontRightToLeft 1
#define XYBitmap 0
#define XYPixmap 1
#define ZPixmap 2
#define AllocNone 0
#define AllocAll 1
#define DoRed (1 << 0)
#define CursorShape 0
#define TileShape 1
#define StippleShape 2
#define AutoRepeatModeOff 0
#define LedModeOff 0
#define MappingSuccess 0
#define MappingBusy 1
#define MappingFailed 2
#define DontPreferBlanking 0
#define PreferBlanking 1
#define DisableScreenSaver 0
#define HostInsert 0
#define HostDelete 1
#define EnableAccess 1
#define DisableAccess 0
#define StaticGray 0
#define GrayScale 1
#define StaticColor 2
#define PseudoColor 3
#define TrueColor 4
#define DirectColor 5
#define LSBFirst 0
#define MSBFirst 1

/* Xlib.h */
#define Bool int
#define Status int
#define True 1
#define False 0
#define QueuedAlready 0
#define QueuedAfterReading 1
#define QueuedAfterFlush 2
#define AllPlanes 1UL
#define ConnectionNumber(display) ((display)->fd)
#define RootWindow(display, screen) (screen)
#define DefaultScreen(display) (display)
#define DefaultVisual(display, screen) (screen)
#define BlackPixel(display, screen) (screen)
#define WhitePixel(display, screen) (screen)
#define QLength(display) (display)
#define DisplayWidth(display, screen) (screen)
#define DisplayHeight(display, screen) (screen)
#define ScreenCount(display) (display)
#define ServerVendor(display) (display)
#define DisplayString(display) (display)
#define ImageByteOrder(display) (display)
#define NextRequest(display) (display)

/* GLib */
#define TRUE (!FALSE)
#define FALSE (0)
#define MIN(a, b) (((a) < (b)) ? (a) : (b))
#define MAX(a, b) (((a) > (b)) ? (a) : (b))
#define ABS(a) (((a) < 0) ? -(a) : (a))
#define CLAMP(x, low, high) (((x) > (high)) ? (high) : (((x) < (low)) ? (low) : (x)))
#define G_BEGIN_DECLS
#define G_END_DECLS
#define G_LIKELY(condition) (condition)
#define G_N_ELEMENTS(array) (sizeof(array) / sizeof((array)[0]))
