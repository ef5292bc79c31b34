// What the viewer says, in the languages of its readers: one row a text, one column a language. A host adds its own
// with addMessages('it', { search: 'Cerca', ... }); what a table does not have is said in English.

const LANGUAGES = ['en', 'de', 'fr', 'es', 'zh'];

const ROWS = {
  tools: ['Tools', 'Werkzeuge', 'Outils', 'Herramientas', '工具'],
  document: ['Document', 'Dokument', 'Document', 'Documento', '文档'],
  outline: ['Outline', 'Gliederung', 'Plan', 'Esquema', '大纲'],
  bookmarks: ['Bookmarks', 'Textmarken', 'Signets', 'Marcadores', '书签'],
  noOutline: ['No headings in this document', 'Keine Überschriften in diesem Dokument',
    'Aucun titre dans ce document', 'Este documento no tiene títulos', '本文档没有标题'],
  previous: ['Previous page', 'Vorige Seite', 'Page précédente', 'Página anterior', '上一页'],
  next: ['Next page', 'Nächste Seite', 'Page suivante', 'Página siguiente', '下一页'],
  page: ['Page', 'Seite', 'Page', 'Página', '页码'],
  of: ['of {count}', 'von {count}', 'sur {count}', 'de {count}', '共 {count} 页'],
  zoomOut: ['Zoom out', 'Verkleinern', 'Zoom arrière', 'Alejar', '缩小'],
  zoomIn: ['Zoom in', 'Vergrößern', 'Zoom avant', 'Acercar', '放大'],
  zoomReset: ['Zoom: {percent}. Back to actual size', 'Zoom: {percent}. Zurück zur Originalgröße',
    'Zoom : {percent}. Revenir à la taille réelle', 'Zoom: {percent}. Volver al tamaño real',
    '缩放：{percent}。恢复实际大小'],
  fit: ['Fit width', 'An Breite anpassen', 'Ajuster à la largeur', 'Ajustar al ancho', '适合宽度'],
  search: ['Search', 'Suchen', 'Rechercher', 'Buscar', '搜索'],
  searchIn: ['Search in the document', 'Im Dokument suchen', 'Rechercher dans le document',
    'Buscar en el documento', '在文档中搜索'],
  searchPrevious: ['Previous match', 'Voriger Treffer', 'Résultat précédent', 'Resultado anterior', '上一个结果'],
  searchNext: ['Next match', 'Nächster Treffer', 'Résultat suivant', 'Resultado siguiente', '下一个结果'],
  matches: ['{index} of {count}', '{index} von {count}', '{index} sur {count}', '{index} de {count}',
    '第 {index} 个，共 {count} 个'],
  noMatches: ['No matches', 'Keine Treffer', 'Aucun résultat', 'Sin resultados', '没有结果'],
  comments: ['Comments', 'Kommentare', 'Commentaires', 'Comentarios', '批注'],
  changes: ['Tracked changes', 'Änderungen', 'Modifications', 'Cambios', '修订'],
  print: ['Print', 'Drucken', 'Imprimer', 'Imprimir', '打印'],
  copy: ['Copy', 'Kopieren', 'Copier', 'Copiar', '复制'],
  copied: ['Copied', 'Kopiert', 'Copié', 'Copiado', '已复制'],
  copyFailed: ['Copying is not allowed here', 'Kopieren ist hier nicht erlaubt',
    'La copie n’est pas autorisée ici', 'Aquí no se permite copiar', '此处不允许复制'],
  download: ['Download', 'Herunterladen', 'Télécharger', 'Descargar', '下载'],
  html: ['Web page (HTML)', 'Webseite (HTML)', 'Page web (HTML)', 'Página web (HTML)', '网页 (HTML)'],
  markdown: ['Markdown', 'Markdown', 'Markdown', 'Markdown', 'Markdown'],
  text: ['Plain text', 'Nur Text', 'Texte brut', 'Texto sin formato', '纯文本'],
  more: ['More', 'Mehr', 'Plus', 'Más', '更多'],
  close: ['Close', 'Schließen', 'Fermer', 'Cerrar', '关闭'],
  open: ['Open a file', 'Datei öffnen', 'Ouvrir un fichier', 'Abrir un archivo', '打开文件'],
  empty: ['Open a Word document', 'Word-Dokument öffnen', 'Ouvrir un document Word',
    'Abrir un documento de Word', '打开 Word 文档'],
  emptyHint: ['Drop a .doc file here, paste one, or choose it.',
    'Eine .doc-Datei hierher ziehen, einfügen oder auswählen.',
    'Déposez ici un fichier .doc, collez-le ou choisissez-le.',
    'Suelte aquí un archivo .doc, péguelo o elíjalo.', '将 .doc 文件拖到此处、粘贴，或选择文件。'],
  drop: ['Drop to open', 'Zum Öffnen loslassen', 'Déposez pour ouvrir', 'Suelte para abrir', '松开以打开'],
  opening: ['Opening…', 'Wird geöffnet …', 'Ouverture…', 'Abriendo…', '正在打开…'],
  cancel: ['Cancel', 'Abbrechen', 'Annuler', 'Cancelar', '取消'],
  canceled: ['Opening was canceled.', 'Das Öffnen wurde abgebrochen.', 'L’ouverture a été annulée.',
    'Se canceló la apertura.', '已取消打开。'],
  opened: ['Document opened, pages: {count}', 'Dokument geöffnet, Seiten: {count}',
    'Document ouvert, pages : {count}', 'Documento abierto, páginas: {count}', '文档已打开，共 {count} 页'],
  failed: ['This file cannot be shown', 'Diese Datei kann nicht angezeigt werden',
    'Ce fichier ne peut pas être affiché', 'No se puede mostrar este archivo', '无法显示此文件'],
  notFound: ['The file could not be loaded ({reason}).', 'Die Datei konnte nicht geladen werden ({reason}).',
    'Le fichier n’a pas pu être chargé ({reason}).', 'No se pudo cargar el archivo ({reason}).',
    '无法加载文件（{reason}）。'],
  incomplete: ['Parts of this document could not be read.', 'Teile dieses Dokuments konnten nicht gelesen werden.',
    'Certaines parties de ce document n’ont pas pu être lues.',
    'No se pudieron leer algunas partes de este documento.', '无法读取此文档的部分内容。'],
};

const tables = new Map(LANGUAGES.map((language, column) => [
  language, Object.fromEntries(Object.entries(ROWS).map(([key, row]) => [key, row[column]]))]));

const ENGLISH = tables.get('en');

export function addMessages(language, table) {
  const key = language.toLowerCase();
  tables.set(key, { ...tables.get(key), ...table });
}

/** The table of "de-AT", else that of "de". */
function tableOf(language) {
  const parts = language.toLowerCase().split('-');
  while (parts.length > 0 && !tables.has(parts.join('-'))) parts.pop();
  return tables.get(parts.join('-'));
}

/** The language of an element: its own, or that of the nearest around it, through shadows. */
export function languageOf(element) {
  for (let node = element; node; node = node.parentNode ?? node.host) {
    const language = node.getAttribute?.('lang');
    if (language) return language;
  }
  return globalThis.navigator?.language ?? 'en';
}

const formatted = (language, options) => {
  try {
    return new Intl.NumberFormat(language, options);
  } catch {
    return new Intl.NumberFormat('en', options);
  }
};

/** A function that says the texts of a language, say('of', { count: 12 }), and say.percent(0.5). */
export function speaker(language, own) {
  const table = { ...ENGLISH, ...tableOf(language), ...own };
  const number = formatted(language);
  const percent = formatted(language, { style: 'percent' });
  const say = (key, values = {}) => (table[key] ?? key).replace(/\{(\w+)\}/g, (whole, name) => {
    const value = values[name];
    return typeof value === 'number' ? number.format(value) : value ?? whole;
  });
  return Object.assign(say, { percent: (part) => percent.format(part) });
}
