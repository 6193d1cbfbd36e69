# From Send to the server's acceptance of a message with the receipt picture, as it is and zipped (local aiosmtpd).
zw_bench(zw_mail_bench SOURCES MailBench.cpp LIBS zw_mail)
target_compile_definitions(zw_mail_bench PRIVATE ZW_NET_PEER="${CMAKE_SOURCE_DIR}/tests/net/peer.py")
