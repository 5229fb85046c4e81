#!/bin/sh
# layers_test.sh LAYERS SRC: what a layer includes is its own or belongs to a layer that it links, for inline code would
# not be missed by the linker. LAYERS has a line for each folder of SRC that is a layer: its name and those it links.
cd "$2" || exit 1
grep -rn --include='*.h' --include='*.cpp' '^ *#include "[^"]*/' . | awk -v layers="$1" '
  # The layer that a file belongs to: the longest folder of its path that is one.
  function owner(path) {
    while (sub("/[^/]*$", "", path)) if (path in isLayer) return path
    return ""
  }
  BEGIN {
    while ((getline line < layers) > 0) {
      count = split(line, names, " ")
      isLayer[names[1]] = 1
      for (k = 1; k <= count; k++) allowed[names[1], names[k]] = 1
    }
  }
  {
    file = $0; sub("^[.]/", "", file); sub(":.*", "", file)
    header = $0; sub("^[^\"]*\"", "", header); sub("\".*", "", header)
    from = owner(file); to = owner(header)
    if (to == "") next  # of a library
    seen++
    if (!((from, to) in allowed)) { print file ": includes " header ", but " from " does not link " to; wrong++ }
  }
  END {
    if (seen == 0) print "no includes found"
    exit (wrong > 0 || seen == 0)
  }'
