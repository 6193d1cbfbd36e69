# The ledger at 100,000 and 1,000,000 rows: load, save, filing one receipt, totals; beside cat and cp of the same file.
zw_bench(zw_ledger_bench SOURCES LedgerBench.cpp LIBS zw_ledger)
# The same ledger in the grid Grid1: load into the model and view, and scrolling a million rows.
zw_bench(zw_ledger_grid_bench SOURCES LedgerGridBench.cpp LIBS zw_ui)
