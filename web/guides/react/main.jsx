import { useState } from 'react';
import { createRoot } from 'react-dom/client';
import { DocumentViewer } from './DocumentViewer.jsx';

function App() {
  const [title, setTitle] = useState('');
  return (
    <>
      <h1>{title}</h1>
      <DocumentViewer document="letter.doc" theme="auto" onLoad={({ summary }) => setTitle(summary.title)} />
    </>
  );
}

createRoot(document.getElementById('app')).render(<App />);
