// Export descriptors: one entry per export names its arguments (which are
// pointers and whether the export checks them, which values it must refuse and
// with what status, in which order of checks) and one generic test runs them
// all: the valid call succeeds; each checked pointer (and each pointer held
// behind a pointer argument) null gives -8; each refused value gives its status;
// a null pointer wins over every refused value; of two refused values the
// earlier check wins (pointers tested late say so with after()); and no
// failing call writes anything.
#pragma once

#include <cstdint>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "huxvc.h"

namespace hux::check {

struct Bad {
  int64_t value;
  HuxResult status;
  int rank;  // order of the check among the export's value checks
};

struct Arg {
  enum Kind { kIn, kOut, kRef, kVal } kind;
  const void* in = nullptr;   // kIn: the caller's data
  std::vector<uint8_t> init;  // kOut, kRef: the block the pointer (or the pointer it holds) addresses
  int64_t good = 0;           // kVal
  std::vector<Bad> bad;
  std::vector<int64_t> alsoGood;
  bool checked = true;       // a null pointer here is refused
  bool innerChecked = true;  // kRef: a null pointer held here is refused
  int rank = 0;              // a pointer tested after the value checks of lower rank
  size_t offset = 0;         // kOut: the pointer passed addresses this byte of the block
};

inline Arg in(const void* p, bool checked = true) { return {Arg::kIn, p, {}, 0, {}, {}, checked}; }
inline Arg out(std::vector<uint8_t> bytes, bool checked = true) { return {Arg::kOut, nullptr, std::move(bytes), 0, {}, {}, checked}; }
inline Arg out(size_t n, bool checked = true) { return out(std::vector<uint8_t>(n, 0x5A), checked); }
// A block the export also writes before its pointer (padding around a plane).
inline Arg out_at(size_t n, size_t offset) {
  Arg a = out(n);
  a.offset = offset;
  return a;
}
template <class T>
Arg out_value(T v) {
  std::vector<uint8_t> b(sizeof v);
  std::memcpy(b.data(), &v, sizeof v);
  return out(b);
}
// A pointer to a pointer to a block (a cursor, the packed coefficient pointer).
inline Arg ref(std::vector<uint8_t> bytes, bool checked = true, bool innerChecked = true) {
  return {Arg::kRef, nullptr, std::move(bytes), 0, {}, {}, checked, innerChecked};
}
inline Arg after(Arg a, int rank) {
  a.rank = rank;
  return a;
}
// A HuxSize argument's value: the width in the low word, the height in the high one.
constexpr int64_t size_arg(int32_t width, int32_t height) {
  return static_cast<int64_t>(static_cast<uint32_t>(width)) | static_cast<int64_t>(height) * (int64_t{1} << 32);
}
// A pointer into a block, for exports that also touch bytes before it.
inline Arg at(Arg a, size_t offset) {
  a.offset = offset;
  return a;
}
inline Arg val(int64_t good, std::vector<Bad> bad = {}, std::vector<int64_t> alsoGood = {}) {
  return {Arg::kVal, nullptr, {}, good, std::move(bad), std::move(alsoGood)};
}

struct Export {
  const char* name;
  std::vector<Arg> args;
  std::function<HuxResult(const int64_t*)> call;
  HuxResult ok = huxOk;  // what the valid call returns
};
// An export whose valid call returns `st` (an entry point that always refuses).
inline Export returns(Export e, HuxResult st) {
  e.ok = st;
  return e;
}

namespace detail {
template <class P>
P slot(int64_t v) {
  if constexpr (std::is_pointer_v<P>) return reinterpret_cast<P>(static_cast<uintptr_t>(v));
  else if constexpr (std::is_same_v<P, HuxSize>) return HuxSize{static_cast<int32_t>(v), static_cast<int32_t>(v >> 32)};
  else return static_cast<P>(v);
}
template <class... P, size_t... I>
HuxResult invoke(HuxResult(HUX_STDCALL* f)(P...), const int64_t* s, std::index_sequence<I...>) {
  return f(slot<P>(s[I])...);
}
}  // namespace detail

template <class... P>
Export describe(const char* name, HuxResult(HUX_STDCALL* f)(P...), std::vector<Arg> args) {
  if (args.size() != sizeof...(P)) throw std::logic_error(std::string(name) + ": descriptor and prototype differ");
  return {name, std::move(args), [f](const int64_t* s) { return detail::invoke(f, s, std::index_sequence_for<P...>{}); }};
}

inline std::vector<Export>& exports() {
  static std::vector<Export> e;
  return e;
}
struct Describe {
  explicit Describe(std::vector<Export> v) {
    for (Export& e : v) exports().push_back(std::move(e));
  }
};

// Runs the generic test of one export; returns what went wrong.
inline std::vector<std::string> run_export(const Export& e) {
  const size_t n = e.args.size();
  std::vector<std::vector<uint8_t>> blocks(n);
  std::vector<void*> cells(n);
  std::vector<std::string> fails;
  // null: argument to null (-1 none); inner: its held pointer instead; over: values replaced.
  auto run = [&](int null, bool inner, const std::vector<std::pair<size_t, int64_t>>& over, HuxResult want,
                 const std::string& what) {
    std::vector<int64_t> s(n);
    for (size_t i = 0; i < n; ++i) {
      const Arg& a = e.args[i];
      blocks[i] = a.init;
      if (a.kind == Arg::kVal) s[i] = a.good;
      if (a.kind == Arg::kIn) s[i] = static_cast<int64_t>(reinterpret_cast<uintptr_t>(a.in));
      if (a.kind == Arg::kOut) s[i] = static_cast<int64_t>(reinterpret_cast<uintptr_t>(blocks[i].data() + a.offset));
      if (a.kind == Arg::kRef) {
        cells[i] = int(i) == null && inner ? nullptr : blocks[i].data();
        s[i] = static_cast<int64_t>(reinterpret_cast<uintptr_t>(&cells[i]));
      }
      if (int(i) == null && !inner) s[i] = 0;
    }
    for (auto [i, v] : over) s[i] = v;
    const HuxResult got = e.call(s.data());
    if (got != want) fails.push_back(what + ": status " + std::to_string(got) + ", expected " + std::to_string(want));
    if (want == huxOk) return;
    for (size_t i = 0; i < n; ++i) {
      const Arg& a = e.args[i];
      const bool moved = a.kind == Arg::kRef && cells[i] != (int(i) == null && inner ? nullptr : blocks[i].data());
      if ((a.kind == Arg::kOut || a.kind == Arg::kRef) && (blocks[i] != a.init || moved))
        fails.push_back(what + ": argument " + std::to_string(i) + " written on failure");
    }
  };
  run(-1, false, {}, e.ok, "valid arguments");
  std::vector<std::pair<size_t, Bad>> bads;
  for (size_t i = 0; i < n; ++i) {
    const Arg& a = e.args[i];
    for (const Bad& b : a.bad) bads.push_back({i, b});
    for (int64_t v : a.alsoGood) run(-1, false, {{i, v}}, e.ok, "argument " + std::to_string(i) + " = " + std::to_string(v));
  }
  for (size_t i = 0; i < n; ++i)
    for (const bool inner : {false, true}) {
      const Arg& a = e.args[i];
      if (a.kind == Arg::kVal || !(inner ? a.kind == Arg::kRef && a.innerChecked : a.checked)) continue;
      const std::string name = (inner ? "pointer held by argument " : "argument ") + std::to_string(i) + " null";
      run(int(i), inner, {}, huxErrNullPtr, name);
      for (auto& [j, b] : bads)
        run(int(i), inner, {{j, b.value}}, a.rank < b.rank ? huxErrNullPtr : b.status, name + ", argument " + std::to_string(j) + " refused");
    }
  for (auto& [i, b] : bads) {
    const std::string name = "argument " + std::to_string(i) + " = " + std::to_string(b.value);
    run(-1, false, {{i, b.value}}, b.status, name);
    for (auto& [j, c] : bads)
      if (j != i && c.rank > b.rank) run(-1, false, {{i, b.value}, {j, c.value}}, b.status, name + " before argument " + std::to_string(j));
  }
  return fails;
}

}  // namespace hux::check
