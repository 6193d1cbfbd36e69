zw_bench(zw_amounts_bench SOURCES AmountsBench.cpp LIBS zw_core)
