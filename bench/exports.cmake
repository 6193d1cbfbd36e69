# Each export from the command to the file on disk.
zw_bench(zw_export_bench SOURCES ExportBench.cpp LIBS zw_export_images zw_print)
