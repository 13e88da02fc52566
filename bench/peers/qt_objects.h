// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QProperty>
#include <QString>
#include <tuple>

class Receiver : public QObject {
  Q_OBJECT
 public:
  int sum = 0;
 public Q_SLOTS:
  void take(int v) { sum += v; }
};

class Sender : public QObject {
  Q_OBJECT
  Q_PROPERTY(int value READ value WRITE setValue NOTIFY valueChanged)
  Q_PROPERTY(int plain READ plain WRITE setPlain)
 public:
  int value() const { return value_; }
  void setValue(int v) {
    if (v != value_) {
      value_ = v;
      Q_EMIT valueChanged(v);
    }
  }
  int plain() const { return plain_; }
  void setPlain(int v) { plain_ = v; }
  Q_INVOKABLE int add(int v) { return v + 1; }
  Q_INVOKABLE void put(int v) { plain_ = v; }
  Q_INVOKABLE QObject* echo(QObject* o) { return o; }
  Q_INVOKABLE QString echoText(const QString& text) { return text; }
  void fire(int v) { Q_EMIT fired(v); }
 Q_SIGNALS:
  void valueChanged(int v);
  void fired(int v);

 private:
  int value_ = 0, plain_ = 0;
};

/// Eight classes with `add` and `put` of their own.
#define SENDER_KIND(Name)                        \
  class Name : public Sender {                   \
    Q_OBJECT                                     \
   public:                                       \
    Q_INVOKABLE int add(int v) { return v + 1; } \
    Q_INVOKABLE void put(int v) { setPlain(v); } \
  };
SENDER_KIND(Sender0)
SENDER_KIND(Sender1)
SENDER_KIND(Sender2)
SENDER_KIND(Sender3)
SENDER_KIND(Sender4)
SENDER_KIND(Sender5)
SENDER_KIND(Sender6)
SENDER_KIND(Sender7)
#undef SENDER_KIND

template <int K>
using SenderKind =
    std::tuple_element_t<K, std::tuple<Sender0, Sender1, Sender2, Sender3, Sender4, Sender5, Sender6, Sender7>>;
