// Plays the recordings of the calls that are shown, one after the other.
const audio = byId("audio");
const quietOf = (r) => raw.quiet[r] || [];
const drawWave = () => {
  const wave = byId("wave");
  const r = player.call < 0 ? -1 : recordingOf[player.call];
  const length = audio.duration || (r < 0 ? 0 : raw.seconds[r] / 10);
  const done = length > 0 ? audio.currentTime / length : 0;
  drawPeaks(wave, r, wave.clientWidth || 300, 34, done);
  wave.setAttribute("aria-valuenow", String(Math.round(100 * done)));
  wave.setAttribute("aria-valuetext",
    `${Math.round(audio.currentTime)} of ${Math.round(length)} seconds`);
};
const play = (i) => {
  const r = recordingOf[i];
  if (r < 0) return;
  player.call = i;
  byId("player").hidden = false;
  const talk = talkersText(i);
  const time = i < known ? `${clockText(starts[i])} ` : "";
  byId("now-text").textContent = time + groupName(groupOf[i]) + (talk ? `: ${talk}` : "");
  byId("now-transcript").textContent = transcripts.get(i) || "";
  audio.src = recordingUrl(r);
  audio.playbackRate = Number(byId("speed").value);
  audio.play().catch(() => {});
  grid.draw();
  drawWave();
};
// The next one with a recording among those shown; where none plays yet, the first or last.
const step = (by) => {
  let at = player.call < 0 ? (by > 0 ? -1 : shown.length) : shown.indexOf(player.call);
  if (player.call >= 0 && at < 0) at = by > 0 ? -1 : shown.length;
  for (at += by; at >= 0 && at < shown.length; at += by) {
    if (recordingOf[shown[at]] < 0) continue;
    grid.choose(at, false);
    play(shown[at]);
    return;
  }
};
const toggle = () => {
  if (player.call < 0) step(1);
  else if (audio.paused) audio.play().catch(() => {});
  else audio.pause();
};
const skipQuiet = () => {
  if (player.call < 0 || !byId("skip").checked) return;
  const quiet = quietOf(recordingOf[player.call]);
  for (let at = 0; at < quiet.length; at += 2) {
    if (audio.currentTime >= quiet[at] / 10 && audio.currentTime < quiet[at + 1] / 10 - 0.05) {
      audio.currentTime = quiet[at + 1] / 10;
      return;
    }
  }
};
const setUpPlayer = () => {
  byId("play").addEventListener("click", toggle);
  byId("next").addEventListener("click", () => step(1));
  byId("previous").addEventListener("click", () => step(-1));
  byId("play-all").addEventListener("click", () => {
    player.call = -1;
    step(1);
  });
  byId("speed").addEventListener("change", () => {
    audio.playbackRate = Number(byId("speed").value);
  });
  audio.addEventListener("ended", () => step(1));
  audio.addEventListener("error", () => {
    if (player.call < 0) return;
    byId("now-transcript").textContent =
      `Cannot be played: ${recordingPath(recordingOf[player.call])}`;
  });
  audio.addEventListener("timeupdate", () => {
    skipQuiet();
    drawWave();
  });
  for (const event of ["play", "pause"]) {
    audio.addEventListener(event, () => {
      byId("play").firstElementChild.className = `icon ${audio.paused ? "go" : "halt"}`;
      byId("play").setAttribute("aria-label", audio.paused ? "Play" : "Pause");
    });
  }
  const seek = (part) => {
    if (audio.duration) audio.currentTime = Math.min(Math.max(part, 0), 1) * audio.duration;
  };
  byId("wave").addEventListener("click", (event) => seek(event.offsetX / event.target.clientWidth));
  byId("wave").addEventListener("keydown", (event) => {
    const by = {ArrowLeft: -5, ArrowRight: 5}[event.key];
    if (by && audio.duration) seek((audio.currentTime + by) / audio.duration);
  });
  document.addEventListener("keydown", (event) => {
    const typing = event.target.closest("input, select, textarea, summary, a, button");
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    const takesLetters = typing && typing.matches("[type=search], [type=number], select");
    if (takesLetters || (typing && event.key === " ")) return;
    if (event.key === "j") step(1);
    else if (event.key === "k") step(-1);
    else if (event.key === " ") toggle();
    else return;
    event.preventDefault();
  });
};
