# The ledger at 100,000 and 1,000,000 rows: load, save, filing one receipt, totals; beside cat and cp of the same file.
zw_bench(zw_ledger_bench SOURCES LedgerBench.cpp LIBS zw_ledger)
