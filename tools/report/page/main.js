// Puts everything together.
const names = raw.days.map((day) => (day.start >= 0 ? dateText(day.start) : day.name));
document.title = `Calls of ${names[0]}` + (names.length > 1 ? ` to ${names.at(-1)}` : "");
byId("title").textContent = document.title;
byId("made").textContent = `Made by corvane-tools ${raw.version} from ` +
  (names.length > 1 ? `${names.length} day folders.` : "one day folder.");
showOverview();
setUpCalls();
setUpTimeline();
drawChart();
setUpMissed();
setUpPeople();
setUpPlayer();
let redraw = 0;
const again = () => {
  cancelAnimationFrame(redraw);
  redraw = requestAnimationFrame(() => {
    drawTimeline();
    grid.draw();
    drawWave();
  });
};
window.addEventListener("resize", again);
matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => {
  colours.clear();
  for (const canvas of document.querySelectorAll("#grid canvas")) canvas.shows = -1;
  recolourChart();
  again();
});
document.documentElement.dataset.ready = "true";
