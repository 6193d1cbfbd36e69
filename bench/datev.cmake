# The DATEV batch of a million ledger rows beside iconv -f UTF-8 -t WINDOWS-1252 over the same ledger in the same
# run: five runs, each printing both times and their ratio.
zw_bench(zw_datev_bench SOURCES DatevBench.cpp LIBS zw_books)
