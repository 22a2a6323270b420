#!/bin/sh
# compile.sh COMPILER ARGUMENT... -o FILE ...: compiles, and gives the file the time at which that began. ninja then sees that a
# header was changed meanwhile, by an editor or a merge, and compiles again; else what was compiled with the old one would
# stay for ever, and code that takes a class for smaller than it is damages the heap.
began=$(date +%s.%N)
# ccache takes precompiled headers for what they were when told that nobody changes them by options or the clock.
CCACHE_SLOPPINESS=pch_defines,time_macros "$@" || exit
while [ "$1" != -o ]; do shift; done
exec touch -d "@$began" "$2"
