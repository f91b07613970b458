# The tests of what the database decides, once more on a PostgreSQL of their own, which the first of them starts and the
# last one removes. -DTALLYFOLD_POSTGRESQL_TESTS=OFF is for machines that are to have none.
option(TALLYFOLD_POSTGRESQL_TESTS "Run the tests of the service on PostgreSQL as well" ON)
if(NOT TALLYFOLD_POSTGRESQL_TESTS)
    return()
endif()

file(GLOB sources CONFIGURE_DEPENDS postgresql/tests/*.cpp)
add_executable(LedgerServicePostgresqlTests ${sources})
target_link_libraries(LedgerServicePostgresqlTests PRIVATE TallyfoldFlags LedgerService LedgerServiceTesting
    GTest::gtest GTest::gtest_main)
tallyfold_compile_fast(LedgerServicePostgresqlTests)
add_dependencies(LedgerServicePostgresqlTests tallyfold-service)
set(script ${PROJECT_SOURCE_DIR}/scripts/postgresql)
target_compile_definitions(LedgerServicePostgresqlTests PRIVATE TALLYFOLD_POSTGRESQL_SCRIPT="${script}"
    TALLYFOLD_SERVICE_PROGRAM="$<TARGET_FILE:tallyfold-service>")

# Not below the sources: the server's own user has to get there.
string(SHA1 place ${CMAKE_BINARY_DIR})
string(SUBSTRING ${place} 0 8 place)
set(server /tmp/tallyfold-postgresql-${place})
add_test(NAME PostgreSQL.start COMMAND ${script} start ${server} --quick)
add_test(NAME PostgreSQL.remove COMMAND ${script} remove ${server})
set_tests_properties(PostgreSQL.start PROPERTIES FIXTURES_SETUP PostgreSQL)
set_tests_properties(PostgreSQL.remove PROPERTIES FIXTURES_CLEANUP PostgreSQL)
set(leaks LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/leaks.supp:print_suppressions=0)
set(properties TIMEOUT 300 FIXTURES_REQUIRED PostgreSQL
    ENVIRONMENT "TALLYFOLD_TEST_SERVER=${server};${leaks};UBSAN_OPTIONS=print_stacktrace=1")

# One test ends the connections of everybody on the server, and so runs alone.
set(alone Server.IsFoundAgainAfterItHasEndedAllConnections)
gtest_discover_tests(LedgerServicePostgresqlTests TEST_PREFIX PostgreSQL. DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 120 NO_PRETTY_VALUES TEST_FILTER "-${alone}" PROPERTIES ${properties})
gtest_discover_tests(LedgerServicePostgresqlTests TEST_PREFIX PostgreSQL. TEST_LIST alone_on_postgresql
    DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120 NO_PRETTY_VALUES TEST_FILTER ${alone}
    PROPERTIES ${properties} RUN_SERIAL TRUE)
# The promises that hold wherever books are kept. Others are about files alone, or about no database at all.
set(everywhere
    AccessFlow.* PasswordChange.* AccountRoutes.* FoundedCompany.* Audited.* AuditOfSections.* BookRoutes.*
    CapitalRoutes.* CategoryRoutes.* CommandGroup.* CommandLane.* CommandOnce.* CompanyWalk.* OwnCompanies.*
    CompanySettings.* CompanyApplications.* Transfer.LetsPeople* Demonstration.* DividendRoutes.* DraftRoutes.*
    EntryRoutes.* FinancialSettingsRoute.* HostileRequests.* Invitations.* Members.* Changes/MemberRefusal.* Posting.*
    Profile.* CategoryPreferences.* Receipts.* ReceiptRoom.* Rules/RefusedEntry.* Table/RefusedReversals.*
    Registration.* Reversal.* RightsMatrix.* Operators.* Sections.* ServedByAProcess.Keeps*
    ServedByAProcess.Founds* SharedDatabase.* SignIn.* SnapshotDelta.* SnapshotBlocks.* SnapshotRoute.* Storage.Keeps*
    Storage.Rolls* Storage.Says* TemplateRoutes.* Verify.*)
add_test(NAME PostgreSQL.names COMMAND ${CMAKE_COMMAND} -DPROGRAM=$<TARGET_FILE:LedgerServiceTests>
    "-DPATTERNS=${everywhere}" -P ${PROJECT_SOURCE_DIR}/cmake/EachNamesTests.cmake)
list(JOIN everywhere : everywhere)
string(APPEND everywhere "-CommandGroup.ConfirmsNothing*:CommandGroup.SaysThatTheDisk*:Audited.VerifyNamesRecords*"
    ":Audited.ASealTells*") # by what only files do
gtest_discover_tests(LedgerServiceTests TEST_PREFIX PostgreSQL. TEST_LIST on_postgresql DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 120 NO_PRETTY_VALUES TEST_FILTER "${everywhere}" PROPERTIES ${properties})
