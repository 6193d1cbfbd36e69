zw_bench(zw_rtf_bench SOURCES RtfBench.cpp LIBS zw_export zw_service)
# The RTF view: from the alsrtf command to the saved file, with and without the capture.
zw_bench(zw_rtfexp_bench SOURCES RtfExportBench.cpp LIBS zw_ui)
