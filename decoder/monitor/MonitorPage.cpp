#include "MonitorPage.h"

namespace vdec {

namespace {

// The picture is swapped only once the next one has loaded, so the wall never
// flickers; a failed fetch (decoder stopped) is retried at the same pace.
const char* const kPage = R"HTML(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>%TITLE% - wall monitor</title>
<style>
  html, body { margin: 0; background: #0d0e11; color: #d8dce3; font: 14px "DejaVu Sans", sans-serif; }
  header { display: flex; gap: 24px; align-items: baseline; padding: 8px 14px; background: #1a1c21;
           border-bottom: 1px solid #2c3038; }
  header b { color: #fff; font-size: 16px; }
  header span { color: #9aa3b2; }
  header .value { color: #e8ecf2; }
  #state.down { color: #e06c6c; }
  main { padding: 12px; }
  .links { text-align: center; color: #9aa3b2; }
  .links a { color: #8fb8e8; }
  #wall { display: block; width: 100%; max-width: 1920px; height: auto; margin: 0 auto;
          box-shadow: 0 0 0 1px #2c3038, 0 4px 18px rgba(0,0,0,.6); }
</style>
</head>
<body>
<header>
  <b id="device">%TITLE%</b>
  <span>wall <span class="value" id="name">-</span></span>
  <span>grid <span class="value" id="grid">-</span></span>
  <span>windows <span class="value" id="windows">-</span></span>
  <span>clients <span class="value" id="clients">-</span></span>
  <span id="state">connecting</span>
</header>
<main><img id="wall" alt="wall" src="wall.png">
<p class="links"><a href="wall.png" target="_blank">still picture</a> &middot;
<a href="state.json" target="_blank">state</a></p></main>
<script>
const wall = document.getElementById('wall');
const field = id => document.getElementById(id);
const width = () => Math.min(3840, Math.max(640, Math.round(wall.clientWidth * devicePixelRatio)));
// The wall moves: a stream of pictures, drawn by the decoder only while this page shows
// it. Should the stream end (decoder restarted, too many watchers), it is asked again.
function watch() {
  wall.onerror = () => setTimeout(watch, 1000);
  wall.src = 'wall.mjpeg?w=' + width() + '&t=' + Date.now();
}
document.addEventListener('visibilitychange', () => {
  if (document.hidden) wall.src = 'wall.png?w=' + width() + '&t=' + Date.now(); else watch();
});
watch();
function refresh() {
  setTimeout(refresh, 1000);
  fetch('state.json?t=' + Date.now()).then(r => r.json()).then(s => {
    field('device').textContent = s.deviceId + ' (' + s.model + ', ' + s.address + ')';
    field('name').textContent = s.name;
    field('grid').textContent = s.grid.cols + ' x ' + s.grid.rows;
    field('windows').textContent = s.windows.length;
    field('clients').textContent = s.clients;
    field('state').textContent = s.identify ? 'identifying screens' : 'live';
    field('state').className = '';
  }).catch(() => { field('state').textContent = 'no answer'; field('state').className = 'down'; });
}
refresh();
</script>
</body>
</html>
)HTML";

} // namespace

std::string MonitorPage::html(const QString& deviceId)
{
    QString escaped = deviceId.toHtmlEscaped();
    return QString::fromUtf8(kPage).replace(QLatin1String("%TITLE%"), escaped).toStdString();
}

} // namespace vdec
