# The cash book: one journal entry with and without its fsync, filing at 100,000 rows without the journal, through
# the window's watcher and through CashBook::change, and journal verify over 1,000,000 entries beside sha256sum of
# the same file.
zw_bench(zw_books_bench SOURCES BooksBench.cpp LIBS zw_books)
