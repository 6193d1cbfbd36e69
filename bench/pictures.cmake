# Picture exports from the command to the file, the capture included: tens of milliseconds at most.
zw_bench(zw_pictures_bench SOURCES PicturesBench.cpp LIBS zw_print zw_export_images)
