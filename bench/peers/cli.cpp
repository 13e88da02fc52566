// SPDX-License-Identifier: MIT
// Command lines.  30 options are declared: 10 flags (-a/--flag-0 ...) and 20
// that take a value (-A/--value-0 ...).  Repeated values are collected.
#include <getopt.h>
#include <cstring>
#include "bench/measure.h"
#if PEERS_QT
#include <QCommandLineParser>
#endif
#if PEERS_GLIB
#include <glib.h>
#endif
#if PEERS_CLI11
#include <CLI/CLI.hpp>
#endif
#if PEERS_BOOST_PO
#include <boost/program_options.hpp>
#endif

using namespace bench;
using benchmark::State;
namespace {
constexpr int kFlags = 10, kValues = 20;

struct Names {
  std::vector<std::string> flag, value;
  Names() {
    for (int i = 0; i < kFlags; ++i) flag.push_back("flag-" + std::to_string(i));
    for (int i = 0; i < kValues; ++i) value.push_back("value-" + std::to_string(i));
  }
};
static const Names& names() {
  static const Names n;
  return n;
}
static char flag_char(int i) { return "abcdefgijk"[i]; }  // -h is taken by some peers
static char value_char(int i) { return char('A' + i); }   // A..T

// argv holds n arguments after the program name: flags, --value-N=x, --value-N x, -N x and
// operands (-Nx is left out: GOptionContext does not know it).
static std::vector<std::string> make_args(int n) {
  std::vector<std::string> v{"prog"};
  Rng r{42};
  while (int(v.size()) < n + 1) {
    int f = int(r.below(kFlags)), k = int(r.below(kValues));
    std::string x = "text" + std::to_string(r.below(1000));
    switch (r.below(int(v.size()) < n ? 6 : 4)) {
      case 0: v.push_back(std::string("-") + flag_char(f)); break;
      case 1: v.push_back("--" + names().flag[std::size_t(f)]); break;
      case 2: v.push_back("--" + names().value[std::size_t(k)] + "=" + x); break;
      case 3: v.push_back("file" + x); break;
      case 4:
        v.push_back("--" + names().value[std::size_t(k)]);
        v.push_back(x);
        break;
      default:
        v.push_back(std::string("-") + value_char(k));
        v.push_back(x);
        break;
    }
  }
  return v;
}
static const std::vector<std::string>& args(int n) {
  static const std::vector<std::string> big = make_args(1000), small = make_args(8);
  return n == 8 ? small : big;
}
static std::vector<char*> pointers(const std::vector<std::string>& v) {
  std::vector<char*> p;
  for (auto& a : v) p.push_back(const_cast<char*>(a.c_str()));
  p.push_back(nullptr);
  return p;
}

// What every peer must have found.
struct Found {
  std::size_t flags = 0, values = 0, operands = 0;
};
static Found getopt_all(const std::vector<std::string>& v) {
  static const std::vector<option> longs = [] {
    std::vector<option> o;
    for (int i = 0; i < kFlags; ++i)
      o.push_back({names().flag[std::size_t(i)].c_str(), no_argument, nullptr, flag_char(i)});
    for (int i = 0; i < kValues; ++i)
      o.push_back({names().value[std::size_t(i)].c_str(), required_argument, nullptr, value_char(i)});
    o.push_back({nullptr, 0, nullptr, 0});
    return o;
  }();
  static const std::string shorts = [] {
    std::string s;
    for (int i = 0; i < kFlags; ++i) s += flag_char(i);
    for (int i = 0; i < kValues; ++i) {
      s += value_char(i);
      s += ':';
    }
    return s;
  }();
  auto argv = pointers(v);
  int argc = int(v.size()), c;
  Found f;
  std::vector<std::string> got[kValues];
  optind = 0;
  while ((c = getopt_long(argc, argv.data(), shorts.c_str(), longs.data(), nullptr)) != -1) {
    if (c >= 'a') ++f.flags;
    else {
      got[c - 'A'].emplace_back(optarg);
      ++f.values;
    }
  }
  f.operands = std::size_t(argc - optind);
  return f;
}
template <class Parse>
static void run_cli(State& s, int n, Parse parse) {
  auto& v = args(n);
  Found want = getopt_all(v);
  for (auto _ : s) {
    Found f = parse(v);
    if (f.values != want.values || f.operands != want.operands) {
      s.SkipWithError(("found " + std::to_string(f.values) + " values and " + std::to_string(f.operands) +
                       " operands, expected " + std::to_string(want.values) + " and " + std::to_string(want.operands))
                          .c_str());
      return;
    }
  }
  items(s, n);
}
// setup_parse_*: the parser is declared and used once, as a program does.  parse_1000: declared beforehand.
void go_8(State& s) { run_cli(s, 8, getopt_all); }
void go_1000(State& s) { run_cli(s, 1000, getopt_all); }
PEER(go_8, "setup_parse_8/getopt_long");
PEER(go_1000, "setup_parse_1000/getopt_long");
PEER(go_1000, "parse_1000/getopt_long");

#if PEERS_CLI11
struct Cli11 {
  CLI::App app;
  bool flag[kFlags] = {};
  std::vector<std::string> value[kValues], operands;
  Cli11() {
    for (int i = 0; i < kFlags; ++i)
      app.add_flag(std::string("-") + flag_char(i) + ",--" + names().flag[std::size_t(i)], flag[i])
          ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    for (int i = 0; i < kValues; ++i)
      app.add_option(std::string("-") + value_char(i) + ",--" + names().value[std::size_t(i)], value[i])
          ->expected(1)
          ->allow_extra_args(false)
          ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("operands", operands);
  }
  Found parse(const std::vector<std::string>& v) {
    auto argv = pointers(v);
    for (auto& x : value) x.clear();
    operands.clear();
    app.parse(int(v.size()), argv.data());
    Found f;
    for (auto& x : value) f.values += x.size();
    f.operands = operands.size();
    return f;
  }
};
void cli11_8(State& s) {
  run_cli(s, 8, [](auto& v) {
    Cli11 p;
    return p.parse(v);
  });
}
void cli11_1000(State& s) {
  run_cli(s, 1000, [](auto& v) {
    Cli11 p;
    return p.parse(v);
  });
}
void cli11_parse(State& s) {
  Cli11 p;
  run_cli(s, 1000, [&](auto& v) { return p.parse(v); });
}
PEER(cli11_8, "setup_parse_8/CLI11");
PEER(cli11_1000, "setup_parse_1000/CLI11");
PEER(cli11_parse, "parse_1000/CLI11");
#endif

#if PEERS_BOOST_PO
namespace po = boost::program_options;
struct BoostPo {
  po::options_description d;
  po::positional_options_description pos;
  std::vector<bool> flags[kFlags];
  BoostPo() {
    auto add = d.add_options();
    for (int i = 0; i < kFlags; ++i)  // a repeated switch needs a composing vector of bool
      add((names().flag[std::size_t(i)] + "," + flag_char(i)).c_str(),
          po::value<std::vector<bool>>()->zero_tokens()->composing()->default_value({}, "")->implicit_value({true},
                                                                                                            ""));
    for (int i = 0; i < kValues; ++i)
      add((names().value[std::size_t(i)] + "," + value_char(i)).c_str(),
          po::value<std::vector<std::string>>()->composing());
    add("operands", po::value<std::vector<std::string>>()->composing());
    pos.add("operands", -1);
  }
  Found parse(const std::vector<std::string>& v) {
    std::vector<std::string> a(v.begin() + 1, v.end());
    po::variables_map m;
    po::store(po::command_line_parser(a).options(d).positional(pos).run(), m);
    po::notify(m);
    Found f;
    for (auto& n : names().value)
      if (m.count(n)) f.values += m[n].as<std::vector<std::string>>().size();
    if (m.count("operands")) f.operands = m["operands"].as<std::vector<std::string>>().size();
    return f;
  }
};
template <class Parse>
static void run_po(State& s, int n, Parse parse) {
  try {
    run_cli(s, n, parse);
  } catch (const std::exception& e) {
    s.SkipWithError(e.what());
  }
}
void po_8(State& s) {
  run_po(s, 8, [](auto& v) {
    BoostPo p;
    return p.parse(v);
  });
}
void po_1000(State& s) {
  run_po(s, 1000, [](auto& v) {
    BoostPo p;
    return p.parse(v);
  });
}
void po_parse(State& s) {
  BoostPo p;
  run_po(s, 1000, [&](auto& v) { return p.parse(v); });
}
PEER(po_8, "setup_parse_8/Boost.program_options");
PEER(po_1000, "setup_parse_1000/Boost.program_options");
PEER(po_parse, "parse_1000/Boost.program_options");
#endif

#if PEERS_QT
struct QtCli {
  QCommandLineParser p;
  QStringList valueNames;
  QtCli() {
    for (int i = 0; i < kFlags; ++i)
      p.addOption(QCommandLineOption(
          QStringList{QString(QLatin1Char(flag_char(i))), QString::fromStdString(names().flag[std::size_t(i)])}));
    for (int i = 0; i < kValues; ++i) {
      valueNames << QString::fromStdString(names().value[std::size_t(i)]);
      p.addOption(QCommandLineOption(QStringList{QString(QLatin1Char(value_char(i))), valueNames.back()}, QString(),
                                     QStringLiteral("text")));
    }
  }
  Found parse(const std::vector<std::string>& v) {
    QStringList a;
    for (auto& x : v) a << QString::fromLocal8Bit(x.data(), qsizetype(x.size()));
    p.parse(a);
    Found f;
    for (auto& n : std::as_const(valueNames)) f.values += std::size_t(p.values(n).size());
    f.operands = std::size_t(p.positionalArguments().size());
    return f;
  }
};
void qt_8(State& s) {
  run_cli(s, 8, [](auto& v) {
    QtCli p;
    return p.parse(v);
  });
}
void qt_1000(State& s) {
  run_cli(s, 1000, [](auto& v) {
    QtCli p;
    return p.parse(v);
  });
}
void qt_parse(State& s) {
  QtCli p;
  run_cli(s, 1000, [&](auto& v) { return p.parse(v); });
}
PEER(qt_8, "setup_parse_8/QCommandLineParser");
PEER(qt_1000, "setup_parse_1000/QCommandLineParser");
PEER(qt_parse, "parse_1000/QCommandLineParser");
#endif

#if PEERS_GLIB
struct GCli {
  gboolean flag[kFlags] = {};
  gchar** value[kValues] = {};
  gchar** operands = nullptr;
  std::vector<GOptionEntry> e;
  GOptionContext* c = g_option_context_new(nullptr);
  GCli() {
    for (int i = 0; i < kFlags; ++i)
      e.push_back(
          {names().flag[std::size_t(i)].c_str(), flag_char(i), 0, G_OPTION_ARG_NONE, &flag[i], nullptr, nullptr});
    for (int i = 0; i < kValues; ++i)
      e.push_back({names().value[std::size_t(i)].c_str(), value_char(i), 0, G_OPTION_ARG_STRING_ARRAY, &value[i],
                   nullptr, nullptr});
    e.push_back({G_OPTION_REMAINING, 0, 0, G_OPTION_ARG_STRING_ARRAY, &operands, nullptr, nullptr});
    e.push_back({});
    g_option_context_add_main_entries(c, e.data(), nullptr);
  }
  ~GCli() { g_option_context_free(c); }
  Found parse(const std::vector<std::string>& v) {
    auto argv = pointers(v);
    int argc = int(v.size());
    char** a = argv.data();
    GError* error = nullptr;
    if (!g_option_context_parse(c, &argc, &a, &error)) {
      fprintf(stderr, "%s\n", error->message);
      return {};
    }
    Found f;
    for (auto& x : value) {
      if (x) f.values += g_strv_length(x);
      g_strfreev(x);
      x = nullptr;
    }
    if (operands) f.operands = g_strv_length(operands);
    g_strfreev(operands);
    operands = nullptr;
    return f;
  }
};
// A context keeps what it saw, so it is made anew each time: no parse_1000 case.
void g_8(State& s) {
  run_cli(s, 8, [](auto& v) {
    GCli p;
    return p.parse(v);
  });
}
void g_1000(State& s) {
  run_cli(s, 1000, [](auto& v) {
    GCli p;
    return p.parse(v);
  });
}
PEER(g_8, "setup_parse_8/GOptionContext");
PEER(g_1000, "setup_parse_1000/GOptionContext");
#endif
}  // namespace
