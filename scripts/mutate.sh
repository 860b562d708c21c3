#!/usr/bin/env bash
# Plants realistic single faults in src/, one at a time, and reports which the
# release tests catch.
#
#   scripts/mutate.sh [--tree DIR] [--list FILE] [--only ID,ID...] [--jobs N]
#                     [--work DIR] [--out FILE] [--timeout SEC] [--exclude-tests GTEST_PATTERNS] [--keep]
#   scripts/mutate.sh --compare A.tsv B.tsv
#
# --tree DIR      source tree to copy (default: the repository holding this
#                 script, working-tree state); build/ and .git are left out
# --list FILE     fault list (default: DIR/scripts/mutants.txt, else the one
#                 beside this script)
# --only IDS      run only these faults (comma-separated ids)
# --jobs N        ninja and ctest parallelism (default 2)
# --work DIR      scratch directory (default /tmp/hux-mutate-$$, removed at
#                 the end unless --keep)
# --out FILE      where to write the result table (default ./mutate-results.tsv)
# --timeout SEC   per-test timeout for ctest (default 120); a hang is a catch
# --exclude-tests gtest patterns (':'-separated) left out of every run, for a
#                 tree whose own tests are not all green; recorded in the table
# --label TEXT    names the tree in the table when it is not a git checkout
#                 (e.g. the commit an archive was taken from)
# --compare A B   list the faults caught in A but not in B, then exit
#
# Fault list format: entries separated by blank lines, '#' lines ignored:
#   id:   short-name
#   file: src/path/file.h
#   desc: what the fault does
#   from: exact original text (first occurrence in the file is replaced)
#   to:   replacement text
# In from/to, "\n" stands for a line break; everything after "from: " / "to: "
# is taken literally, trailing spaces included.
#
# Statuses: caught, missed, compile-error, not-applied, and equivalent: a missed
# fault whose desc says "(equivalent)" (it cannot change behaviour).
set -u

here=$(cd "$(dirname "$0")" && pwd)

if [ "${1:-}" = "--compare" ]; then
  [ $# -eq 3 ] || { echo "usage: $0 --compare A.tsv B.tsv" >&2; exit 2; }
  exec python3 - "$2" "$3" <<'PY'
import sys
def load(p):
    d = {}
    for line in open(p):
        if line.startswith('#') or not line.strip():
            continue
        f = line.rstrip('\n').split('\t')
        if f[0] == 'id':
            continue
        d[f[0]] = f
    return d
a, b = load(sys.argv[1]), load(sys.argv[2])
lost = [i for i in a if a[i][1] == 'caught' and (i not in b or b[i][1] != 'caught')]
gained = [i for i in b if b[i][1] == 'caught' and (i not in a or a[i][1] != 'caught')]
print(f"caught in {sys.argv[1]} but not in {sys.argv[2]}: {len(lost)}")
for i in lost:
    print(f"  {i:32s} {b[i][1] if i in b else 'absent':14s} {a[i][-1]}")
print(f"caught in {sys.argv[2]} but not in {sys.argv[1]}: {len(gained)}")
for i in gained:
    print(f"  {i:32s} {a[i][1] if i in a else 'absent':14s} {b[i][-1]}")
sys.exit(1 if lost else 0)
PY
fi

tree=$(cd "$here/.." && pwd)
list=""
only=""
jobs=2
work=""
out="$PWD/mutate-results.tsv"
timeout=120
exclude=""
keep=0
label=""
while [ $# -gt 0 ]; do
  case "$1" in
    --tree) tree=$(cd "$2" && pwd); shift 2 ;;
    --list) list=$(cd "$(dirname "$2")" && pwd)/$(basename "$2"); shift 2 ;;
    --only) only="$2"; shift 2 ;;
    --jobs) jobs="$2"; shift 2 ;;
    --work) work="$2"; shift 2 ;;
    --out) out="$2"; shift 2 ;;
    --timeout) timeout="$2"; shift 2 ;;
    --exclude-tests) exclude="$2"; shift 2 ;;
    --keep) keep=1; shift ;;
    --label) label="$2"; shift 2 ;;
    -h|--help) sed -n '2,37p' "$0"; exit 0 ;;
    *) echo "unknown argument: $1" >&2; exit 2 ;;
  esac
done
case "$out" in /*) ;; *) out="$PWD/$out" ;; esac
if [ -z "$list" ]; then
  if [ -f "$tree/scripts/mutants.txt" ]; then list="$tree/scripts/mutants.txt"; else list="$here/mutants.txt"; fi
fi
[ -f "$list" ] || { echo "no fault list: $list" >&2; exit 2; }
[ -n "$work" ] || work="/tmp/hux-mutate-$$"
mkdir -p "$work"
work=$(cd "$work" && pwd)
src="$work/src"
bld="$work/build"
log="$work/log"
mkdir -p "$log"
if [ "$keep" = 0 ]; then trap 'rm -rf "$work"' EXIT; fi

start=$(date +%s)
echo "tree:  $tree"
echo "list:  $list"
echo "work:  $work"

# Parse the list into one directory per fault (file, from, to, desc).
parsed="$work/faults"
rm -rf "$parsed"
python3 - "$list" "$parsed" "$only" <<'PY' || exit 2
import os, sys
path, outdir, only = sys.argv[1], sys.argv[2], sys.argv[3]
want = [x for x in only.split(',') if x] if only else None
entries, cur = [], {}
def flush():
    global cur
    if cur:
        for k in ('id', 'file', 'desc', 'from', 'to'):
            if k not in cur:
                sys.exit(f"{path}: entry {cur.get('id', '?')} has no '{k}:' line")
        entries.append(cur)
    cur = {}
for raw in open(path, encoding='utf-8'):
    line = raw.rstrip('\n')
    if line.startswith('#'):
        continue
    if not line.strip():
        flush()
        continue
    key, sep, val = line.partition(':')
    if not sep or key not in ('id', 'file', 'desc', 'from', 'to'):
        sys.exit(f"{path}: cannot read line: {line}")
    val = val[1:] if val.startswith(' ') else val
    if key in ('from', 'to'):
        val = val.replace('\\n', '\n')
    else:
        val = val.strip()
    cur[key] = val
flush()
ids = [e['id'] for e in entries]
dup = {i for i in ids if ids.count(i) > 1}
if dup:
    sys.exit(f"{path}: duplicate ids: {' '.join(sorted(dup))}")
if want:
    unknown = [w for w in want if w not in ids]
    if unknown:
        sys.exit(f"unknown ids: {' '.join(unknown)}")
    entries = [e for e in entries if e['id'] in want]
os.makedirs(outdir)
with open(os.path.join(outdir, 'order'), 'w') as o:
    for n, e in enumerate(entries):
        d = os.path.join(outdir, f"{n:04d}")
        os.makedirs(d)
        for k in ('id', 'file', 'desc', 'from', 'to'):
            with open(os.path.join(d, k), 'w', encoding='utf-8') as f:
                f.write(e[k])
        o.write(d + '\n')
PY

# ---------------------------------------------------------------- copy and baseline
rm -rf "$src"
mkdir -p "$src"
tar -C "$tree" --exclude=./build --exclude=./.git -cf - . | tar -C "$src" -xf -
rev=$(git -C "$tree" rev-parse HEAD 2>/dev/null || echo unknown)
[ -n "$label" ] && rev="$label"
dirty=""
if [ "$rev" != unknown ] && [ -n "$(git -C "$tree" status --porcelain -- src tests 2>/dev/null)" ]; then dirty="+changes"; fi

# Examples are built (and their tests run) only when a selected fault lies in one of them.
examples=OFF
if cat "$parsed"/*/file 2>/dev/null | grep -q '^examples/'; then examples=ON; fi
cmake_args=(-G Ninja -DCMAKE_BUILD_TYPE=Release -DHUX_BUILD_TESTS=ON -DHUX_BUILD_BENCH=OFF -DHUX_BUILD_EXAMPLES=$examples)
if grep -qs 'HUX_TEST_INSTALL' "$src/CMakeLists.txt" "$src/tests/CMakeLists.txt"; then
  cmake_args+=(-DHUX_TEST_INSTALL=OFF)
fi
if ! cmake -S "$src" -B "$bld" "${cmake_args[@]}" >"$log/configure.txt" 2>&1; then
  echo "configure failed, see $log/configure.txt" >&2; keep=1; exit 1
fi

if [ -n "$exclude" ]; then export GTEST_FILTER="-$exclude"; fi

build() { ninja -C "$bld" -j "$jobs" </dev/null >"$1" 2>&1; }
runtests() { (cd "$bld" && ctest -j "$jobs" --timeout "$timeout" --output-on-failure) </dev/null >"$1" 2>&1; }
# Names of the failed ctest tests and GoogleTest cases in a test log (at most six).
failed_names() {
  { grep -oE '^\[  FAILED  \] [A-Za-z0-9_./]+' "$1" | awk '{print $4}'
    grep -oE '[0-9]+ - [A-Za-z0-9_]+ \((Failed|Timeout|SEGFAULT|Subprocess aborted|Child aborted|Exception|[A-Za-z ]+)\)' "$1" |
      sed -E 's/^[0-9]+ - //; s/ \(/:/; s/\)$//' | grep -v '^library:Failed$'
  } | awk '!seen[$0]++' | head -6 | paste -sd, -
}

echo "baseline: building"
if ! build "$log/baseline-build.txt"; then
  echo "baseline build failed, see $log/baseline-build.txt" >&2; keep=1; exit 1
fi
if ! runtests "$log/baseline-test.txt"; then
  echo "baseline tests fail ($(failed_names "$log/baseline-test.txt")); see $log/baseline-test.txt" >&2
  echo "(use --exclude-tests to leave out a test that fails on the unmodified tree)" >&2
  keep=1; exit 1
fi
echo "baseline: green ($(( $(date +%s) - start )) s)"

# ---------------------------------------------------------------- the faults
# Replaces the first occurrence of FROM with TO in FILE; exit 3 when absent.
apply_fault() {
  python3 - "$1" "$2" "$3" <<'PY'
import sys
path, frm, to = sys.argv[1], open(sys.argv[2], encoding='utf-8').read(), open(sys.argv[3], encoding='utf-8').read()
try:
    text = open(path, encoding='utf-8').read()
except FileNotFoundError:
    sys.exit(3)
i = text.find(frm)
if i < 0 or frm == to:
    sys.exit(3)
open(path, 'w', encoding='utf-8').write(text[:i] + to + text[i + len(frm):])
PY
}

tsv="$work/results.tsv"
{
  echo "# huxvc mutation run: tree $tree at $rev$dirty, list $(basename "$list"), $(date -u +%Y-%m-%dT%H:%MZ)"
  [ -n "$exclude" ] && echo "# tests left out of every run: $exclude"
  printf 'id\tstatus\tfile\tcaught_by\tdescription\n'
} >"$tsv"

total=0; caught=0; missed=0; cerr=0; napp=0; equiv=0
while read -r d; do
  id=$(cat "$d/id"); file=$(cat "$d/file"); desc=$(cat "$d/desc")
  total=$((total + 1))
  t0=$(date +%s)
  target="$src/$file"
  cp -p "$target" "$d/orig" 2>/dev/null || true
  by=""
  if ! apply_fault "$target" "$d/from" "$d/to"; then
    status="not-applied"; napp=$((napp + 1))
  elif ! build "$log/$id-build.txt"; then
    status="compile-error"; cerr=$((cerr + 1))
  elif runtests "$log/$id-test.txt"; then
    case "$desc" in
      *"(equivalent)"*) status="equivalent"; equiv=$((equiv + 1)) ;;
      *) status="missed"; missed=$((missed + 1)) ;;
    esac
  else
    status="caught"; caught=$((caught + 1)); by=$(failed_names "$log/$id-test.txt")
  fi
  # Restore the content; the new time stamp makes ninja rebuild the file's
  # users (from ccache where installed) before the next fault.
  [ -f "$d/orig" ] && cat "$d/orig" >"$target"
  printf '%s\t%s\t%s\t%s\t%s\n' "$id" "$status" "$file" "$by" "$desc" >>"$tsv"
  printf '%-34s %-13s %3ss  %s\n' "$id" "$status" "$(( $(date +%s) - t0 ))" "$desc"
done 3<&- <"$parsed/order"

mkdir -p "$(dirname "$out")"
cp "$tsv" "$out"
elapsed=$(( $(date +%s) - start ))
echo
echo "faults: $total  caught: $caught  missed: $missed  equivalent (missed, marked): $equiv  compile errors: $cerr  not applied: $napp  ($elapsed s)"
if [ "$missed" -gt 0 ]; then
  echo "missed:"
  awk -F'\t' '$2 == "missed" {printf "  %-32s %s\n", $1, $5}' "$tsv"
fi
echo "results: $out"
