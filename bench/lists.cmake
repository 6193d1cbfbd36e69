# One keystroke's completion over 100,000 entries: a prefix that matches only the last entry, and one that
# matches none (the goal: under 2 ms each); loading autocom.dat of that size.
zw_bench(zw_lists_bench SOURCES AutocompleteBench.cpp LIBS zw_lists)
