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
const dark = matchMedia("(prefers-color-scheme: dark)");
const takeColours = () => {
  colours.clear();
  for (const canvas of document.querySelectorAll("#grid canvas")) canvas.shows = -1;
};
window.addEventListener("resize", again);
dark.addEventListener("change", () => {
  takeColours();
  recolourChart();
  again();
});
// Paper is white and shows all that is chosen. The chart stays as it is: browsers print nothing of
// one that is drawn anew here.
const putOnPaper = (onPaper) => {
  document.documentElement.classList.toggle("paper", onPaper);
  byId("airtime-chart").classList.toggle("from-dark", onPaper && dark.matches);
  byId("airtime-chart").style.zoom = onPaper ? 690 / byId("airtime-chart").clientWidth : "";
  takeColours();
  drawTimeline();
  for (const table of [grid, missedGrid]) table.print(onPaper);
};
window.addEventListener("beforeprint", () => putOnPaper(true));
window.addEventListener("afterprint", () => putOnPaper(false));
document.documentElement.dataset.ready = "true";
