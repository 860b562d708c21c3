#!/usr/bin/env python3
"""Every export and header-only helper is documented: the declaration is directly preceded by a
/** ... */ block holding @brief, one @param per argument (and none for a name it does not take),
and, unless it returns void, at least one @retval naming a status (HuxResult functions) or a
@return / @retval (others). Needs nothing but Python; the doxygen test checks the same and more
when doxygen is installed.

Usage: check_docs.py huxvc.h huxcore.h huxvc_tables.h"""
import re
import sys

EXPORT = re.compile(r"^(?:HUX_API|HUXCORE_API) (.+?) HUX_STDCALL (\w+)\((.*)\);\s*$")
INLINE = re.compile(r"^static inline (.+?)\b(\w+)\(")


def arg_names(args):
    args = " ".join(args.split())
    if args in ("", "void"):
        return []
    names = []
    for a in args.split(","):
        m = re.search(r"(\w+)\s*(\[[^\]]*\])?\s*$", a.strip())
        names.append(m.group(1))
    return names


def doc_before(lines, i):
    """The /** ... */ block ending on the line just above line i, or None."""
    j = i - 1
    if j < 0 or not lines[j].rstrip().endswith("*/"):
        return None
    k = j
    while k >= 0 and "/**" not in lines[k]:
        if k < j and "*/" in lines[k]:
            return None
        k -= 1
    return "\n".join(lines[k:j + 1]) if k >= 0 else None


def main(paths):
    texts = {p: open(p, encoding="utf-8").read() for p in paths}
    statuses = set()
    for t in texts.values():
        statuses.update(re.findall(r"^\s*(hux(?:Ok|Err\w+|Wrn\w+)) = -?\d+", t, re.M))
    problems, count = [], 0
    for path, text in texts.items():
        lines = text.split("\n")
        for i, line in enumerate(lines):
            m = EXPORT.match(line)
            if m:
                ret, name, args = m.group(1), m.group(2), m.group(3)
            else:
                m = INLINE.match(line)
                if not m:
                    continue
                ret, name = m.group(1).strip(), m.group(2)
                sig, k = line[m.end():], i
                while ")" not in sig:  # arguments over several lines
                    k += 1
                    sig += " " + lines[k].strip()
                args = sig[:sig.index(")")]
            count += 1
            where = f"{path}:{i + 1}: {name}"
            doc = doc_before(lines, i)
            if doc is None:
                problems.append(f"{where}: no /** ... */ block directly above")
                continue
            if "@brief" not in doc:
                problems.append(f"{where}: no @brief")
            documented = re.findall(r"@param(?:\[[a-z,]+\])?\s+(\w+)", doc)
            want = arg_names(args)
            for a in want:
                if documented.count(a) != 1:
                    problems.append(f"{where}: argument {a} has {documented.count(a)} @param lines")
            for a in documented:
                if a not in want:
                    problems.append(f"{where}: @param {a} names no argument")
            retvals = re.findall(r"@retval\s+(\w+)", doc)
            if ret.strip() == "HuxResult":
                if not retvals:
                    problems.append(f"{where}: returns HuxResult but lists no @retval")
                for r in retvals:
                    if r not in statuses:
                        problems.append(f"{where}: @retval {r} is not a status")
            elif ret.strip() != "void" and not retvals and "@return" not in doc:
                problems.append(f"{where}: no @return")
    for p in problems:
        print(p)
    if count == 0:
        print("no declarations found")
        return 1
    print(f"{count} declarations checked, {len(problems)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
