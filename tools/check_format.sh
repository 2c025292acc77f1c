#!/bin/bash
# Checks the layout of every C++ file with clang-format 14, that none is longer than a reader can survey, and the
# syntax of every Python and shell script.
# Run with --fix to apply the layout.
cd "$(dirname "$0")/.." || exit 2
mode="--dry-run -Werror"
[ "${1:-}" = "--fix" ] && mode="-i"
formatter=$(command -v clang-format-14 || command -v clang-format) || { echo "clang-format is missing"; exit 2; }
folders=$(ls -d sdk bench host tools tests samples examples benchmarks 2>/dev/null)

# files NAME... : the files of these names, each ended by a zero byte.
files() {
  local tests=(-name "$1")
  local name
  for name in "${@:2}"; do
    tests+=(-o -name "$name")
  done
  find $folders -type f \( "${tests[@]}" \) -print0
}

code=0
files '*.h' '*.cpp' | xargs -0r "$formatter" $mode || code=1
files '*.h' '*.cpp' | xargs -0r awk -v most=400 '
  FNR == most + 1 { print FILENAME ": more than " most " lines; split it by what it is about" > "/dev/stderr"; faulty = 1 }
  END { exit faulty }' || code=1
files '*.py' | xargs -0r python3 -B -c '
import sys
faulty = False
for name in sys.argv[1:]:
    try:
        with open(name, "rb") as file:
            compile(file.read(), name, "exec")
    except (SyntaxError, ValueError) as error:
        print(f"{name}: {error}", file=sys.stderr)
        faulty = True
sys.exit(faulty)' || code=1
while IFS= read -r -d '' script; do
  bash -n "$script" || code=1
done < <(files '*.sh'; find . -maxdepth 1 -name '*.sh' -print0)
exit $code
