# One keystroke's completion over 100,000 entries: a prefix that matches only the last entry, and one that
# matches none (the goal: under 2 ms each); loading autocom.dat of that size.
zw_bench(zw_lists_bench SOURCES AutocompleteBench.cpp LIBS zw_lists)
# The article list: loading and saving 100,000 rows beside cat and cp on the same file, a 10,000-row report.
zw_bench(zw_list_table_bench SOURCES ListBench.cpp LIBS zw_lists)
# The article list's load of 100,000 rows against cat of the same file in the same run: min, median, ratio.
add_executable(zw_list_load_ratio ListLoadRatio.cpp)
target_link_libraries(zw_list_load_ratio PRIVATE zw_lists zw_flags)
