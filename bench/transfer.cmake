# From abort() on a running download to its finished event, and a silent server's time-out (local http.server).
zw_bench(zw_transfer_bench SOURCES TransferBench.cpp LIBS zw_net)
target_compile_definitions(zw_transfer_bench PRIVATE ZW_NET_PEER="${CMAKE_SOURCE_DIR}/tests/net/peer.py")
