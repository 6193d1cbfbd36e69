# Capture of the receipt area: a few milliseconds per photograph.
zw_bench(zw_print_bench SOURCES CaptureBench.cpp LIBS zw_print)
