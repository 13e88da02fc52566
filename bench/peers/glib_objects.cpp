// SPDX-License-Identifier: MIT
#include "bench/peers/glib_objects.h"
#if PEERS_GLIB

guint fired_signal;
GParamSpec* value_spec;

struct PeerObjClass {
  GObjectClass parent;
};
G_DEFINE_TYPE(PeerObj, peer_obj, G_TYPE_OBJECT)
static void peer_obj_set(GObject* o, guint id, const GValue* v, GParamSpec* spec) {
  auto* p = reinterpret_cast<PeerObj*>(o);
  if (id == 2) {
    p->plain = g_value_get_int(v);
    return;
  }
  int n = g_value_get_int(v);
  if (n != p->value) {
    p->value = n;
    g_object_notify_by_pspec(o, spec);
  }
}
static void peer_obj_get(GObject* o, guint id, GValue* v, GParamSpec*) {
  auto* p = reinterpret_cast<PeerObj*>(o);
  g_value_set_int(v, id == 2 ? p->plain : p->value);
}
static void peer_obj_class_init(PeerObjClass* c) {
  auto* oc = reinterpret_cast<GObjectClass*>(c);
  oc->set_property = peer_obj_set;
  oc->get_property = peer_obj_get;
  value_spec = g_param_spec_int("value", nullptr, nullptr, G_MININT, G_MAXINT, 0,
                                GParamFlags(G_PARAM_READWRITE | G_PARAM_STATIC_STRINGS | G_PARAM_EXPLICIT_NOTIFY));
  g_object_class_install_property(oc, 1, value_spec);
  g_object_class_install_property(
      oc, 2,
      g_param_spec_int("plain", nullptr, nullptr, G_MININT, G_MAXINT, 0,
                       GParamFlags(G_PARAM_READWRITE | G_PARAM_STATIC_STRINGS | G_PARAM_EXPLICIT_NOTIFY)));
  fired_signal = g_signal_new("fired", G_TYPE_FROM_CLASS(c), G_SIGNAL_RUN_LAST, 0, nullptr, nullptr,
                              g_cclosure_marshal_VOID__INT, G_TYPE_NONE, 1, G_TYPE_INT);
  g_signal_set_va_marshaller(fired_signal, G_TYPE_FROM_CLASS(c), g_cclosure_marshal_VOID__INTv);
}
static void peer_obj_init(PeerObj*) {}
#endif
