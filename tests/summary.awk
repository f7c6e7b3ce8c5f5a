# Reads CTest's JUnit report for ./fennic. Tests that skipped themselves come first, with their reason; then
# what the failed ones printed, and the list of them in the environment variable REASONS; the last line
# counts. Fails when a test did, or when none ran.

function plain(text) {
    gsub(/&lt;/, "<", text)
    gsub(/&gt;/, ">", text)
    gsub(/&quot;/, "\"", text)
    gsub(/&amp;/, "\\&", text)
    return text
}

function attribute(name) {
    if (!match($0, " " name "=\"[^\"]*\"")) return ""
    return plain(substr($0, RSTART + length(name) + 3, RLENGTH - length(name) - 4))
}

/^\t<testcase / {
    name = attribute("name")
    sub(/ +# GetParam\(\) = .*/, "", name)
    status = attribute("status")
    output = ""
    skipped = 0
}

# Any other test that did not run is a failure: its program was missing.
/^\t\t<skipped message="SKIP_/ { skipped = 1 }

/^\t\t<system-out>/ { inside = 1; sub(/^\t\t<system-out>/, "") }

inside {
    line = $0
    if (sub(/<\/system-out>$/, "", line)) inside = 0
    output = output plain(line) "\n"
}

/^\t<\/testcase>/ {
    if (status == "run") {
        passed++
    } else if (skipped) {
        reason = output
        if (match(output, /: Skipped\n[^\n]+/)) reason = substr(output, RSTART + 10, RLENGTH - 10)
        gsub(/^\n+|\n+$/, "", reason)
        print "skipped: " name ": " reason
    } else {
        failed++
        failures = failures "\n==== " name "\n" output
    }
}

END {
    if (failed) printf "%s\nFailed:\n%s\n", failures, ENVIRON["REASONS"]
    printf "%d passed, %d failed\n", passed, failed
    exit (passed == 0 || failed > 0)
}
