// What was followed, airtime, missed and why, new groups and radios, unnamed, silent gaps.
const why = {
  encrypted: "marked as encrypted", malformed: "a field is missing or is no number",
  individual: "not a group's call", not_granted: "the network did not grant it",
  counted_before: "LOG mode: counted already", in_call: "another call was followed",
  dropped_by_hand: "dropped by hand a moment before", held_elsewhere: "another group was held",
  locked_out: "locked out in the list of groups", bad_frequency: "no frequency to tune to",
  bad_timeslot: "the timeslot is none of 1 to 4", abandoned: "given up while SDR# was being tuned",
  followed: "followed", counted: "LOG mode: counted",
};
const heard = new Set(["followed", "counted", "counted_before"]);

const groupCalls = new Int32Array(groups.length);
const groupAirtime = new Float64Array(groups.length); // tenths
const radioCalls = new Int32Array(radios.length);
const totals = {followed: 0, counted: 0, airtime: 0, ends: {}};
const airtimeByHour = new Float64Array(24);
const callsByHour = new Int32Array(24);
for (let i = 0; i < total; ++i) {
  const airtime = Math.max(0, lengths[i]);
  if (isFollowed(i)) {
    ++totals.followed;
    totals.airtime += airtime;
    totals.ends[endOf(i)] = (totals.ends[endOf(i)] || 0) + 1;
  } else {
    ++totals.counted;
  }
  if (groupOf[i] >= 0) {
    ++groupCalls[groupOf[i]];
    groupAirtime[groupOf[i]] += airtime;
  }
  if (i < known) {
    const hour = Math.floor(secondOfDay(starts[i]) / 3600);
    airtimeByHour[hour] += airtime;
    ++callsByHour[hour];
  }
  for (let t = talkerFrom[i]; t < talkerFrom[i + 1]; ++t) {
    let again = false;
    for (let before = talkerFrom[i]; before < t && !again; ++before) {
      again = talkers[before] === talkers[t];
    }
    if (!again) ++radioCalls[talkers[t]];
  }
}
const missedTotal = raw.outcomes.reduce((sum, [name, n]) => sum + (heard.has(name) ? 0 : n), 0);

const groupLink = (g) => element("a", {href: `#group-${groups[g].number}`}, groupName(g));
const radioLink = (r) => element("a", {href: `#radio-${radios[r].number}`}, radioName(r));
const listOf = (places, link, most = 30) => {
  const list = element("p", {});
  places.slice(0, most).forEach((place, at) => list.append(at ? ", " : "", link(place)));
  if (places.length > most) list.append(` and ${countText(places.length - most)} more`);
  return list;
};
const barOf = (part) => {
  const bar = element("span", {class: "bar", "aria-hidden": "true"});
  bar.style.width = `${Math.round(100 * part)}%`;
  return element("div", {class: "bars"}, bar);
};

const showOverview = () => {
  const card = (value, text) =>
    byId("cards").append(element("div", {class: "card"}, element("b", {}, value),
      element("span", {}, text)));
  const active = groups.map((_, g) => g).filter((g) => groupCalls[g] > 0);
  const talked = radios.map((_, r) => r).filter((r) => radioCalls[r] > 0);
  card(countText(totals.followed), "calls followed");
  card(spanText(totals.airtime / 10), "airtime");
  card(countText(missedTotal), "setups missed");
  card(`${countText(active.length)} / ${countText(talked.length)}`, "groups / radios heard");
  card(countText(recordings), "recordings");
  if (totals.counted > 0) card(countText(totals.counted), "calls counted in LOG mode");

  const into = byId("findings");
  const part = (title, ...content) => into.append(element("h3", {}, title), ...content);
  for (const notice of raw.notices) into.append(element("p", {class: "notice"}, notice));
  if (total === 0) into.append(element("p", {}, "There are no calls in what was read."));
  const ends = Object.entries(totals.ends)
    .map(([name, n]) => `${countText(n)} ${name.replace("_", " ")}`);
  if (ends.length > 0) part("How calls ended", element("p", {}, ends.join(", ")));

  const busiest = active.sort((a, b) => groupAirtime[b] - groupAirtime[a]).slice(0, 8);
  if (busiest.length > 0) {
    const most = groupAirtime[busiest[0]] || 1;
    part("Airtime of groups", tableOf(["Group", "#Calls", "#Airtime", "Share"], busiest.map((g) => [groupLink(g),
      countText(groupCalls[g]), spanText(groupAirtime[g] / 10), barOf(groupAirtime[g] / most)]),
    "Groups with the most airtime"));
  }
  const reasons = raw.outcomes.filter(([name, n]) => n > 0 && !heard.has(name))
    .sort((a, b) => b[1] - a[1]);
  part("Missed and why", reasons.length === 0
    ? element("p", {class: "quiet"}, "No setup of the control channel log was missed.")
    : tableOf(["Why", "#Setups"], reasons.map(([name, n]) => [why[name], countText(n)]),
      "Why setups were missed"));

  const fresh = (named, counts) =>
    named.map((_, at) => at).filter((at) => named[at].fresh && counts[at] > 0);
  const freshGroups = fresh(groups, groupCalls);
  const freshRadios = fresh(radios, radioCalls);
  part("New groups and radios", raw.earlier === 0
    ? element("p", {class: "quiet"}, "There are no earlier days to compare with.")
    : element("p", {class: "quiet"}, `Not heard in the ${raw.earlier} earlier day folders: ` +
      `${countText(freshGroups.length)} groups, ${countText(freshRadios.length)} radios.`));
  if (freshGroups.length > 0) into.append(listOf(freshGroups, groupLink));
  if (freshRadios.length > 0) into.append(listOf(freshRadios, radioLink));

  const noName = (named, counts) => named.map((_, at) => at)
    .filter((at) => !named[at].label && counts[at] > 0).sort((a, b) => counts[b] - counts[a]);
  const noGroups = noName(groups, groupCalls);
  const noRadios = noName(radios, radioCalls);
  part("Unnamed", element("p", {class: "quiet"},
    `${counted(noGroups.length, "group")} and ${counted(noRadios.length, "radio")} without a ` +
    "name, the busiest first."));
  if (noGroups.length > 0) into.append(listOf(noGroups, groupLink));
  if (noRadios.length > 0) into.append(listOf(noRadios, radioLink));

  const silent = raw.silent.reduce((sum, flag) => sum + flag, 0);
  const noGap = raw.days.some((day) => day.logged)
    ? "The event log has no gap of half an hour or more."
    : "Without an event log nothing is known of gaps.";
  part("Silent gaps", raw.gaps.length === 0
    ? element("p", {class: "quiet"}, noGap)
    : tableOf(["From", "To", "#For"], raw.gaps.map(([from, to]) =>
      [isoText(from).replace("T", " "), isoText(to).replace("T", " "), spanText(to - from)]),
    "Gaps in the event log"));
  if (silent > 0) {
    into.append(element("p", {class: "notice"},
      `${counted(silent, "recording")} with nothing but silence.`));
  }
};
