# zettelwerk-cli as a whole process: words beside /bin/true, ledger totals of 1,000,000 rows beside awk.
add_executable(zw_cli_ratio CliRatio.cpp)
target_link_libraries(zw_cli_ratio PRIVATE zw_flags)
target_compile_definitions(zw_cli_ratio PRIVATE ZW_CLI="$<TARGET_FILE:zettelwerk-cli>")
add_dependencies(zw_cli_ratio zettelwerk-cli)
