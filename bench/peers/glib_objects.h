// SPDX-License-Identifier: MIT
#pragma once

/// The GObject that stands in the rows of GLib: a signal `fired`, a property `value` that notifies, one `plain` that
/// doesn't.
#if PEERS_GLIB
#include <glib-object.h>

struct PeerObj {
  GObject parent;
  int value;
  int plain;
};

GType peer_obj_get_type();

/// Both are set once an object has been made.
extern guint fired_signal;
extern GParamSpec* value_spec;
#endif
