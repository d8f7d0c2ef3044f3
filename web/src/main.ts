import './style.css';

const page = document.getElementById('page');
if (page) {
  page.textContent = document.getElementById('report-data') ? 'Report' : 'This report has no data.';
}
