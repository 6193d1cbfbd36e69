# Many-lined nummer.dat, druck.dat and receipt file read into the form, with the notifications a window would get.
zw_bench(zw_form_load_bench SOURCES FormLoadBench.cpp LIBS zw_ledger)
