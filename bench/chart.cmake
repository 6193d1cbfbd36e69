# The picture of a year ("Auswertung"): the figures of 100,000 rows and the drawing into 1280 x 800; goal under
# 200 ms for both.
zw_bench(zw_chart_bench SOURCES ChartBench.cpp LIBS zw_print_chart)
