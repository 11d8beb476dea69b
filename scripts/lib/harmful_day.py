"""A day folder whose labels, transcript and name of a recording would do harm wherever they were
read as anything else than text."""
import os
import wave

# As a label stands in the event log, and as it is shown.
LABELS = [
    ("</script><script>window.harmed=1</script>", "</script><script>window.harmed=1</script>"),
    ("\"><img src=x onerror=window.harmed=1>", "\"><img src=x onerror=window.harmed=1>"),
    ("' onmouseover='window.harmed=1", "' onmouseover='window.harmed=1"),
    ("<!--<script>", "<!--<script>"),
    ("&lt;b&gt; &amp; &#60;", "&lt;b&gt; &amp; &#60;"),
    ("${window.harmed=1}`{{1+1}}", "${window.harmed=1}`{{1+1}}"),
    ("\\u003c\\\"\\n%00", "\\u003c\\\"\\n%00"),
    ("=HYPERLINK(\"x\",\"y\")", "=HYPERLINK(\"x\",\"y\")"),
    ("+1", "+1"),
    ("-1+1", "-1+1"),
    ("@SUM(1)", "@SUM(1)"),
    ("a, \"b\"; c", "a, \"b\"; c"),
    ("__proto__", "__proto__"),
    ("constructor", "constructor"),
    ("\x01\x02\x1b[31m\x7f", "\x01\x02\x1b[31m\x7f"),
    ("K\u00f6ln \u20ac\u201e\u2122\u00ff", "K\u00f6ln \u20ac\u201e\u2122\u00ff"),
]
# Behind what the program writes stands what a user may add to the name of a file.
RECORDING = "140001_1_9001 #1 100%25 'K\u00f6ln' &x=+.wav"
TRANSCRIPT = "transcribed </pre><img src=x onerror=window.harmed=1> & more"


def write_harmful_day(folder):
    day = os.path.join(folder, "Daily", "20261115")
    os.makedirs(os.path.join(day, "Record"))
    with open(os.path.join(day, "TETRA_event.log"), "wb") as log:
        for number, (label, _) in enumerate(LABELS, start=1):
            at = f"15/11/2026 14:{number - 1:02d}"
            log.write("".join(line + "\r\n" for line in (
                f"{at}:00 - Call ID: {number} - On carrier: 2610 - Group: {9000 + number} "
                f"[{label}]",
                f"{at}:00 - Call ID: {number} - Calling SSI: {5000 + number} [{label}]",
                f"{at}:09 - Call ID: {number} - VC D-Released")).encode("cp1252"))
    with wave.open(os.path.join(day, "Record", RECORDING), "wb") as sound:
        sound.setparams((1, 2, 8000, 0, "NONE", ""))
        sound.writeframes(b"\x00\x10\x00\xf0" * 12000)
    with open(os.path.join(day, "Record", RECORDING[:-4] + ".txt"), "w", encoding="utf-8") as text:
        text.write(TRANSCRIPT)
