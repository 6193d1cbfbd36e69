zw_bench(zw_rtf_bench SOURCES RtfBench.cpp LIBS zw_export zw_service)
