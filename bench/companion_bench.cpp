// A frame of the speech companion while nobody speaks: the first officer is there, the voice runs.
#include <benchmark/benchmark.h>

#include <string>

#include "bench/frames.h"
#include "speech/companion/helper_process.h"
#include "speech/companion/link.h"
#include "tests/speech/text_dataref.h"

namespace {

// The first officer's datarefs, as she leaves them between two sentences.
class FirstOfficer {
public:
    FirstOfficer() {
        for (size_t i = 0; i < std::size(names); i++) handles[i] = PublishTextDataref(names[i], texts[i]);
    }
    ~FirstOfficer() {
        for (XPLMDataRef handle : handles) XPLMUnregisterDataAccessor(handle);
        fennic_speech::ResetLink();
    }
    FirstOfficer(const FirstOfficer &) = delete;
    FirstOfficer &operator=(const FirstOfficer &) = delete;

private:
    static constexpr const char *names[] = {"kv/to_speech", "kv/fr_speech", "kv/speech/messages",
                                            "kv/speech/expected"};
    std::string texts[std::size(names)] = {
        "", "",
        "1 contextpath>/X-Plane/Aircraft/plugins/fennic/64/\n2 initvoice>x\n"
        "3 say>Before start checklist.\n4 say>Seats and belts?\n",
        "adjusted and locked\nlocked\nfastened\nbefore start checklist\n"};
    XPLMDataRef handles[std::size(names)] = {};
};

void BM_CompanionFrame(benchmark::State &state) {
    using namespace fennic_speech;
    const FirstOfficer firstOfficer;
    HelperProcess process;
    std::string error, line;
    if (!process.Start("/bin/cat", error)) state.SkipWithError(error.c_str());
    TimeEachFrame(state, [&] {
        process.Exchange();
        while (process.TakeLogLine(line)) {
        }
        if (FindFirstOfficer()) {
            hasComeAnew();
            while (TakeMessage(line)) {
            }
            TakeExpected(line);
        }
        while (process.TakeLine(line)) {
        }
        DeliverAnswer();
    });
    process.End();
}
BENCHMARK(BM_CompanionFrame);

} // namespace
