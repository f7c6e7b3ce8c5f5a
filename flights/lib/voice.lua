-- Flights in which she is heard and hears need the companion plug-in; where it was not built they are skipped.
-- And what she said aloud, compared with what she was to say.
local check = require "lib.check"

local voice = {}

local HOME = sim.dir("xplane") .. "Resources/plugins/fennic_speech/"
local PROCESS = "fennic_speech/process"

if not check.read(HOME .. "settings.txt") then
    print("SKIPPED: there is no plug-in fennic_speech, since its engines were not built")
    os.exit(0)
end

local separator = package.config:sub(1, 1)
local is_windows = separator == "\\"
voice.program = HOME .. "64/fennic-voice" .. (is_windows and ".exe" or "")
voice.native_program = voice.program:gsub("/", separator) -- as the log names it
voice.killed = is_windows and "" or "ended by signal 9" -- how one ended that was killed, in the log, if one can tell
voice.ended = is_windows and "killed" or "by signal 9" -- how one did that the plug-in has ended

-- The number of the process that speaks and listens, 0 for none.
function voice.process()
    return sim.get(PROCESS)
end

-- A process is gone before the next frame, on Windows after a second; nil when there was none.
function voice.kill(process)
    local was_there = os.execute((is_windows and "taskkill /f /pid %d >NUL 2>&1" or "kill -9 %d 2>/dev/null"):format(process))
    if is_windows then os.execute("ping -n 2 127.0.0.1 >NUL") end
    return was_there
end

-- Takes the right to run its file from it, where there are such rights.
function voice.forbid_running()
    return is_windows or os.execute("chmod 644 '" .. voice.program .. "'")
end

-- ---- Sound ----

-- The samples that are not silence, in order: of one channel of a WAV file that has so many.
local function sounds(path, channels, channel)
    local data = check.read(path):sub(45)
    local sample = ("(..)"):rep(channels)
    return (data:gsub(sample, function(...)
        local one = select(channel, ...)
        return one == "\0\0" and "" or one
    end))
end

-- Compares the right channel of a recording with what the program says when it is given the texts alone. Gives
-- the seconds of sound.
function voice.check_recorded(path, texts)
    local alone = sim.dir("xplane") .. "alone.wav"
    check.write(alone .. ".txt", "say>" .. table.concat(texts, "\nsay>") .. "\n")
    local command = is_windows
        and [[set "FENNIC_VOICE_HOST=" & "%s" --settings NUL --model nowhere --loudspeaker "%s" <"%s" >NUL 2>&1]]
        or "env -u FENNIC_VOICE_HOST '%s' --settings /dev/null --model /nowhere --loudspeaker '%s' <'%s' >/dev/null 2>&1"
    assert(os.execute(command:format(voice.program, alone, alone .. ".txt")))
    local wanted, heard = sounds(alone, 1, 1), sounds(path, 2, 2)
    check.that(#wanted > 2000 * #texts, "the texts alone have no sound")
    if heard ~= wanted then
        local same = 1
        while heard:byte(same) == wanted:byte(same) do same = same + 1 end
        error(("she said %d samples instead of %d, the same ones up to %d"):format(#heard // 2, #wanted // 2, same // 2), 2)
    end
    return #heard / 32000
end

return voice
