# Each export from the command to the file on disk, the capture included; the preview's resample.
zw_bench(zw_export_bench SOURCES ExportBench.cpp LIBS zw_ui)
